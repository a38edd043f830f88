#include "platform/desktop_windows.h"
#include "platform/keyboard.h"
#include "platform/platform.h"
#include "platform/pointer.h"
#include "support/headless_kwin.h"
#include "support/sway_session.h"
#include "support/wait_until.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using test::waitUntil;

namespace {

constexpr quint8 enter = 13;
constexpr quint8 alt = 18;
constexpr int seenTime = 5000; // milliseconds, far more than it takes to be seen

struct Sway
{
    void useAsDesktop() const
    {
        session.useAsDesktop();
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    }

    SwaySession session{{u"output HEADLESS-1 resolution 1280x800"_s}};
};

struct KWin
{
    void useAsDesktop() const { session.useAsDesktop(); }

    HeadlessKWin session{{QFileInfo(u"/proc/self/exe"_s).symLinkTarget(), QStringLiteral(PLUM_PROGRAM)}};
};

// The real program on a compositor of its own, worked and seen through the ports of the test's own process.
template <typename Compositor> class ProgramOnWayland : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_compositor.session.isReady());
        m_compositor.useAsDesktop();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        // As on any desktop, a keyboard and a mouse are there before the first window is.
        platform = createPlatform(folder() + u"/test"_s);
        platform->keyboard();
        platform->pointer();
        ASSERT_TRUE(QFile::link(QStringLiteral(PLUM_PROGRAM), folder() + u"/plum"_s));
        write(u"config/load/set.ini"_s, "[hotkey]\r\nhotkey=Alt+Z\r\n");
    }

    void TearDown() override
    {
        m_program.terminate();
        EXPECT_TRUE(m_program.state() == QProcess::NotRunning || m_program.waitForFinished(test::patience));
    }

    QString folder() const { return m_folder.path(); }

    void write(const QString &name, const QByteArray &content)
    {
        QFile file(folder() + u'/' + name);
        QDir().mkpath(QFileInfo(file).path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    // A script's line that adds a variable to the results.
    QByteArray saving(const QByteArray &variable) const
    {
        return "file.save \"" + QFile::encodeName(folder()) + "/results.txt\",\"" + variable
            + "\",\"append\"\r\n";
    }

    QStringList results() const
    {
        QFile file(folder() + u"/results.txt"_s);
        return file.open(QIODevice::ReadOnly)
            ? QString::fromUtf8(file.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts)
            : QStringList();
    }

    void start(const QStringList &arguments = {})
    {
        m_program.setProcessChannelMode(QProcess::ForwardedChannels);
        m_program.start(folder() + u"/plum"_s, arguments);
    }

    bool ends()
    {
        return waitUntil([this] { return m_program.state() == QProcess::NotRunning; });
    }

    WindowHandle launcher() { return platform->windows().byTitle(u"Plum"_s); }
    bool comesUpWithTheKeyboard()
    {
        return waitUntil(
            [this] { return launcher() != 0 && platform->windows().foreground() == launcher(); });
    }
    bool goes()
    {
        return waitUntil([this] { return launcher() == 0; });
    }

    void tap(quint8 key)
    {
        platform->keyboard().keyEvent(key, 0);
        platform->keyboard().keyEvent(key, Keyboard::KeyUp);
    }

    void pressHotkey()
    {
        platform->keyboard().keyEvent(alt, 0);
        tap('Z');
        platform->keyboard().keyEvent(alt, Keyboard::KeyUp);
    }

    // While it starts nobody has seen it, and a press fetches it: then there has to be another one.
    bool goesOnceItHasBeenSeen()
    {
        QDeadlineTimer again(0);
        return waitUntil([&] {
            if (launcher() != 0 && again.hasExpired()) {
                pressHotkey();
                again.setRemainingTime(seenTime);
            }
            return launcher() == 0;
        });
    }

    void showAndHideTheLauncherByItsHotkey();
    void runAScript();

    std::unique_ptr<Platform> platform;

private:
    Compositor m_compositor;
    QTemporaryDir m_folder;
    QProcess m_program;
};

template <typename Compositor> void ProgramOnWayland<Compositor>::showAndHideTheLauncherByItsHotkey()
{
    write(u"config/apps/note/main.wf"_s, "set.app \"ran\"\r\n" + saving("app"));
    start();
    ASSERT_TRUE(comesUpWithTheKeyboard());
    ASSERT_TRUE(goesOnceItHasBeenSeen());
    for (int round = 0; round < 10; ++round) {
        pressHotkey();
        ASSERT_TRUE(comesUpWithTheKeyboard()) << round;
        pressHotkey();
        ASSERT_TRUE(goes()) << round;
    }
    pressHotkey();
    ASSERT_TRUE(comesUpWithTheKeyboard());
    for (const char key : {'N', 'O', 'T', 'E'})
        tap(static_cast<quint8>(key));
    tap(enter);
    EXPECT_TRUE(waitUntil([this] { return results() == QStringList{u"ran"_s}; }));
}

template <typename Compositor> void ProgramOnWayland<Compositor>::runAScript()
{
    start();
    ASSERT_TRUE(comesUpWithTheKeyboard());
    write(u"drive.wf"_s,
        "window.get \"active_window\",\"front\"\r\n"
        "window.set \"move_window\",set.front,\"40:50\"\r\n"
        "window.get \"window_xy\",set.front,\"place\"\r\n"
            + saving("place")
            + "mouse.move \"333:444\"\r\n"
              "mouse.get_xy \"at\"\r\n"
            + saving("at")
            + "os.set_clipboard \"from a script\"\r\n"
              "os.get_clipboard \"copied\"\r\n"
            + saving("copied"));
    QProcess script;
    script.setProcessChannelMode(QProcess::ForwardedChannels);
    script.start(folder() + u"/plum"_s, {folder() + u"/drive.wf"_s});
    EXPECT_TRUE(waitUntil([&] { return script.state() == QProcess::NotRunning; }));
    EXPECT_EQ(results(), (QStringList{u"40:50"_s, u"333:444"_s, u"from a script"_s}));
    EXPECT_EQ(platform->windows().rectangle(launcher()).topLeft(), QPoint(40, 50));
}

using ProgramOnSway = ProgramOnWayland<Sway>;
using ProgramOnKWin = ProgramOnWayland<KWin>;

} // namespace

TEST_F(ProgramOnSway, showsAndHidesTheLauncherByItsHotkey)
{
    showAndHideTheLauncherByItsHotkey();
}

TEST_F(ProgramOnSway, runsAScriptThatDrivesWindowsMouseAndClipboard)
{
    runAScript();
}

TEST_F(ProgramOnKWin, showsAndHidesTheLauncherByItsHotkey)
{
    showAndHideTheLauncherByItsHotkey();
}

TEST_F(ProgramOnKWin, runsAScriptThatDrivesWindowsMouseAndClipboard)
{
    runAScript();
}

} // namespace plum
