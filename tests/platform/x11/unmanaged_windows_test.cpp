#include "platform/desktop_windows.h"
#include "platform/screen.h"
#include "platform/x11/connection/x11_connection.h"
#include "support/printers.h"
#include "x11_test.h"

#include <QElapsedTimer>

#include <functional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QRect inside(100, 80, 200, 100);
constexpr int border = 7; // pixels

// Windows where no window manager runs.
class UnmanagedWindows : public X11Test
{
protected:
    void SetUp() override
    {
        X11Test::SetUp();
        lower = makeWindow();
        upper = makeWindow();
    }

    WindowHandle makeWindow()
    {
        const xcb_window_t window = xcb_generate_id(program.xcb());
        xcb_create_window(program.xcb(), XCB_COPY_FROM_PARENT, window, program.root(),
            static_cast<int16_t>(inside.x()), static_cast<int16_t>(inside.y()),
            static_cast<uint16_t>(inside.width()), static_cast<uint16_t>(inside.height()), border,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(program.xcb(), window);
        program.sync();
        return static_cast<WindowHandle>(window);
    }

    Windows &windows() { return platform->windows(); }

    X11Connection program; // the windows' own
    WindowHandle lower = 0;
    WindowHandle upper = 0;
};

const QRect outer = QRect(inside.topLeft(), inside.size() + QSize(2 * border, 2 * border));

} // namespace

TEST_F(UnmanagedWindows, haveARectangleWithTheirBorder)
{
    EXPECT_EQ(windows().rectangle(lower), outer);
    windows().moveTo(lower, {31, 42});
    EXPECT_EQ(windows().rectangle(lower), QRect(QPoint(31, 42), outer.size()));
}

TEST_F(UnmanagedWindows, comeToTheFrontWithTheKeyboard)
{
    for (const auto &change : std::initializer_list<std::function<void()>>{[&] { windows().activate(lower); },
             [&] {
                 windows().moveTo(upper, {30, 40});
             },
             [&] { windows().show(lower); }}) {
        const WindowHandle before = windows().stacking().front();
        change();
        EXPECT_NE(windows().stacking().front(), before);
        EXPECT_EQ(windows().foreground(), windows().stacking().front());
    }
}

TEST_F(UnmanagedWindows, areHiddenAndShownWhereTheyWere)
{
    windows().hide(lower);
    EXPECT_FALSE(windows().isOnScreen(lower));
    EXPECT_EQ(windows().rectangle(lower), outer);
    windows().show(lower);
    EXPECT_TRUE(windows().isOnScreen(lower));
    EXPECT_EQ(windows().rectangle(lower), outer);
    // In front, which many a manager sees to by itself.
    EXPECT_EQ(windows().stacking().front(), lower);
    EXPECT_EQ(windows().foreground(), lower);
    windows().maximise(lower);
    EXPECT_EQ(windows().rectangle(lower), QRect(QPoint(), platform->screen().mainScreenSize()));
}

TEST_F(UnmanagedWindows, loseNoTimeWaitingForAManager)
{
    QElapsedTimer time;
    time.start();
    constexpr int rounds = 40;
    for (int round = 0; round < rounds; ++round) {
        windows().activate(round % 2 ? lower : upper);
        windows().minimise(lower);
        windows().close(lower);
        windows().moveTo(lower, {round, round});
        windows().hide(upper);
        windows().show(upper);
    }
    // Half a second for one of them alone would be twenty.
    EXPECT_LT(time.elapsed(), 15'000);
}

} // namespace plum
