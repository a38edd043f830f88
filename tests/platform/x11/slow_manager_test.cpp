#include "slow_manager.h"

#include "platform/desktop_windows.h"
#include "support/printers.h"
#include "x11_test.h"

namespace plum {

namespace {

constexpr QRect area{100, 80, 300, 200};

// A change to a window is over when all that can be asked about it agrees, not when the manager begins.
class SlowManagerTest : public X11Test
{
protected:
    void SetUp() override
    {
        X11Test::SetUp();
        window = xcb_generate_id(program.xcb());
        xcb_create_window(program.xcb(), XCB_COPY_FROM_PARENT, window, program.root(), area.x(), area.y(),
            area.width(), area.height(), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(program.xcb(), window);
        program.sync();
        ASSERT_TRUE(waitUntil([&] { return rectangle() == area.adjusted(0, 0, 8, 28); }));
        ASSERT_TRUE(waitUntil([&] { return windows().isOnScreen(handle()); }));
    }

    Windows &windows() { return platform->windows(); }
    WindowHandle handle() const { return static_cast<WindowHandle>(window); }
    QRect rectangle() { return windows().rectangle(handle()); }

    SlowManager manager;
    X11Connection program; // the window's own
    xcb_window_t window = XCB_NONE;
};

} // namespace

TEST_F(SlowManagerTest, maximisingIsOverWhenTheFrameIsAsLargeAsItIsSaidToBe)
{
    windows().maximise(handle());
    EXPECT_EQ(rectangle(), QRect(0, 0, 1280, 800));
}

TEST_F(SlowManagerTest, fetchingIsOverWhenTheWindowIsOnTheScreen)
{
    const auto tree = program.reply(xcb_query_tree_reply, xcb_query_tree, window);
    ASSERT_TRUE(tree);
    const quint32 elsewhere = 1;
    xcb_change_property(program.xcb(), XCB_PROP_MODE_REPLACE, window, program.atom("_NET_WM_DESKTOP"),
        XCB_ATOM_CARDINAL, 32, 1, &elsewhere);
    xcb_unmap_window(program.xcb(), tree->parent);
    program.sync();
    ASSERT_FALSE(windows().isOnScreen(handle()));
    windows().bringHere(handle());
    EXPECT_TRUE(windows().isOnScreen(handle()));
}

} // namespace plum
