#include "commands/waitable_timer.h"
#include "flight/flight_platform.h"
#include "flight/flight_recorder.h"
#include "platform/desktop_windows.h"
#include "platform/x11/connection/x11_connection.h"
#include "support/wait_until.h"
#include "waits/patience.h"
#include "x11_test.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QTimer>

#include <cstring>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What the server tells of windows where no window manager runs, and waits on that.
class WindowNews : public X11Test
{
protected:
    xcb_window_t makeWindow()
    {
        const xcb_window_t window = xcb_generate_id(program.xcb());
        xcb_create_window(program.xcb(), XCB_COPY_FROM_PARENT, window, program.root(), 10, 10, 50, 50, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        program.sync();
        return window;
    }

    void name(xcb_window_t window, const char *title)
    {
        xcb_change_property(program.xcb(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
            8, static_cast<uint32_t>(std::strlen(title)), title);
        program.sync();
    }

    void destroy(xcb_window_t window)
    {
        xcb_destroy_window(program.xcb(), window);
        program.sync();
    }

    Windows &windows() { return platform->windows(); }

    X11Connection program; // the windows' own
};

bool comes(News &news)
{
    return test::waitUntil([&] { return news.arrived(); });
}

} // namespace

TEST_F(WindowNews, comeWithANewWindowAndWithANewTitle)
{
    const xcb_window_t old = makeWindow();
    const auto news = windows().newsOfTitles();
    ASSERT_TRUE(news);
    EXPECT_TRUE(news->arrived()) << "it may have come before";
    name(old, "Editor");
    EXPECT_TRUE(comes(*news));
    EXPECT_EQ(windows().byTitle(u"Editor"_s), static_cast<WindowHandle>(old));
    const xcb_window_t other = makeWindow();
    EXPECT_TRUE(comes(*news));
    name(other, "Other");
    EXPECT_TRUE(comes(*news));
    EXPECT_EQ(windows().byTitle(u"Other"_s), static_cast<WindowHandle>(other));
}

TEST_F(WindowNews, comeThroughWhatRecordsARun)
{
    FlightRecorder recorder;
    FlightPlatform recorded(*platform, recorder);
    EXPECT_TRUE(recorded.windows().newsOfTitles());
    EXPECT_TRUE(recorded.windows().newsOfEnd(static_cast<WindowHandle>(makeWindow())));
}

TEST_F(WindowNews, areNotMadeByWindowsThatMove)
{
    const xcb_window_t window = makeWindow();
    const auto news = windows().newsOfTitles();
    ASSERT_TRUE(news);
    EXPECT_TRUE(news->arrived());
    xcb_map_window(program.xcb(), window);
    const uint32_t across = 300;
    xcb_configure_window(program.xcb(), window, XCB_CONFIG_WINDOW_X, &across);
    program.sync();
    EXPECT_FALSE(news->arrived());
}

TEST_F(WindowNews, tellOfTheEndOfOneWindowAlone)
{
    const xcb_window_t window = makeWindow();
    const xcb_window_t other = makeWindow();
    const auto news = windows().newsOfEnd(static_cast<WindowHandle>(window));
    ASSERT_TRUE(news);
    EXPECT_TRUE(news->arrived());
    destroy(other);
    EXPECT_FALSE(news->arrived());
    destroy(window);
    EXPECT_TRUE(comes(*news));
    EXPECT_TRUE(windows().rectangle(static_cast<WindowHandle>(window)).isNull());
}

namespace {

// Waits as scripts do, on the system's timers.
class WaitForWindows : public WindowNews
{
protected:
    void SetUp() override
    {
        WindowNews::SetUp();
        clock.start();
        waiter = std::make_unique<clsWaitableTimer>(
            platform->timers(), u"x11_tests"_s, [] { return QDateTime(QDate(2024, 1, 2), QTime(3, 4)); });
        patience = std::make_unique<Patience>(*waiter, [this] { return clock.elapsed(); });
    }

    QElapsedTimer clock;
    std::unique_ptr<clsWaitableTimer> waiter;
    std::unique_ptr<Patience> patience;
};

} // namespace

TEST_F(WaitForWindows, hardlyLookWhileNothingHappens)
{
    int looks = 0;
    EXPECT_FALSE(patience->waitUntil(
        500,
        [&] {
            ++looks;
            return windows().byTitle(u"Nobody"_s) != 0;
        },
        [&] { return windows().newsOfTitles(); }));
    // Before and behind the begin of listening, and at the end; a window of Qt's own may be another reason.
    EXPECT_GE(looks, 3);
    EXPECT_LE(looks, 5);
}

TEST_F(WaitForWindows, endWithTheWindow)
{
    const auto news = windows().newsOfTitles();
    ASSERT_TRUE(news);
    EXPECT_TRUE(news->arrived());
    QTimer::singleShot(0, qApp, [this] { makeWindow(); });
    bool isTold = false;
    // Ends early by the event alone: nothing else asks.
    waiter->Wait(3'600'000.0, [&] { return isTold = news->arrived(); });
    EXPECT_TRUE(isTold);
}

TEST_F(WaitForWindows, findWhatComesMeanwhile)
{
    const xcb_window_t window = makeWindow();
    int looks = 0;
    EXPECT_TRUE(patience->waitUntil(
        60'000,
        [&] {
            if (++looks == 2)
                QTimer::singleShot(0, qApp, [&] { name(window, "Late"); });
            return windows().byTitle(u"Late"_s) != 0;
        },
        [&] { return windows().newsOfTitles(); }));
    looks = 0;
    EXPECT_TRUE(patience->waitUntil(
        60'000,
        [&] {
            if (++looks == 2)
                QTimer::singleShot(0, qApp, [&] { destroy(window); });
            return windows().rectangle(static_cast<WindowHandle>(window)).isNull();
        },
        [&] { return windows().newsOfEnd(static_cast<WindowHandle>(window)); }));
}

} // namespace plum
