#include "platform/desktop_windows.h"
#include "platform/keyboard.h"
#include "platform/stop_signal.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/keyboard/x11_receiver.h"
#include "platform/x11/windows/x11_windows.h"
#include "x11_test.h"

#include <csignal>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60'000; // milliseconds; only a test that fails waits so long

class ReceiverTest : public X11Test
{
protected:
    ReceiverTest()
        : X11Test({u"openbox"_s})
    {
    }

    void SetUp() override
    {
        X11Test::SetUp();
        server.start(m_process, builtProgram(u"x11_probe"_s), {u"window"_s, u"The receiver"_s});
        ASSERT_TRUE(waitUntil([&] {
            window = windows.byTitle(u"The receiver"_s);
            return window != 0 && windows.foreground() == window;
        }));
    }

    X11Connection connection;
    X11Receiver receiver{connection};
    X11Windows windows{connection};
    WindowHandle window = 0;

    void letItHang() { ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }

private:
    QProcess m_process;
};

} // namespace

TEST_F(ReceiverTest, answersWhenItHasWorkedOffWhatWasSent)
{
    EXPECT_TRUE(receiver.hasWorkedOff(patience));
}

// Both listen to the root window.
TEST_F(ReceiverTest, isHeardAlsoWhenAWindowHasBeenMoved)
{
    ASSERT_TRUE(receiver.hasWorkedOff(patience));
    windows.moveTo(window, {30, 40});
    EXPECT_TRUE(receiver.hasWorkedOff(patience));
}

// It hangs, and would be waited for at each change of the map.
TEST_F(ReceiverTest, isNotWaitedForOnceTheRunHasBeenStopped)
{
    letItHang();
    QString text; // more than there are keys for
    for (char16_t character = 0x4e00; character < 0x4e00 + 500; ++character)
        text += QChar(character);
    StopSignal stop;
    Keyboard &keyboard = platform->keyboard();
    keyboard.setStop(&stop);
    qsizetype typed = 0;
    EXPECT_THROW(keyboard.typeText(text,
                     [&] {
                         ++typed;
                         stop.raise();
                     }),
        RunStopped);
    EXPECT_GT(typed, 0);
    EXPECT_LT(typed, text.size());
    keyboard.releaseAll();
    keyboard.setStop(nullptr);
}

TEST_F(ReceiverTest, cannotBeAskedWhenItHasGone)
{
    windows.close(window);
    EXPECT_FALSE(receiver.hasWorkedOff(patience));
}

} // namespace plum
