#include "desktop/support/ports_test.h"
#include "support/least_time.h"

#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class WindowsPort : public PortsTest<EveryManagerTest>
{
protected:
    void SetUp() override
    {
        PortsTest<EveryManagerTest>::SetUp();
        ASSERT_TRUE(platform);
        handle = handleOf(*probe);
    }

    static WindowHandle handleOf(const Probe &of) { return static_cast<WindowHandle>(of.window()); }

    Windows &windows() { return platform->windows(); }
    QRect frame() { return view->frameRectangle(probe->window()); }

    WindowHandle handle = 0;
};

INSTANTIATE_TEST_SUITE_P(Under, WindowsPort, everyManager, managerName);

} // namespace

TEST_P(WindowsPort, knowsTheActiveWindow)
{
    EXPECT_EQ(windows().foreground(), handle);
    const auto other = startProbe(u"Other"_s, {700, 500, 300, 200});
    ASSERT_TRUE(isReadyForUse(*other));
    EXPECT_EQ(windows().foreground(), handleOf(*other));
}

TEST_P(WindowsPort, knowsTheWindowUnderThePointer)
{
    platform->pointer().moveTo(inClient(250, 150));
    EXPECT_EQ(windows().underPointer(), handle);
    // The title bar belongs to the window too.
    platform->pointer().moveTo(frame().topLeft() + QPoint(frame().width() / 2, 8));
    EXPECT_EQ(windows().underPointer(), handle);
    platform->pointer().moveTo({1000, 40});
    EXPECT_EQ(windows().underPointer(), 0);
}

TEST_P(WindowsPort, fetchesAWindowFromAnotherDesktop)
{
    EXPECT_TRUE(windows().isOnScreen(handle));
    const auto cover = startProbe(u"Cover"_s, {0, 0, 1200, 850});
    ASSERT_TRUE(isReadyForUse(*cover));
    EXPECT_TRUE(windows().isOnScreen(handle));

    outputOf(u"xdotool"_s, {u"set_desktop"_s, u"1"_s});
    ASSERT_TRUE(eventually([&] { return !windows().isOnScreen(handle); }));
    windows().bringHere(handle);
    EXPECT_TRUE(windows().isOnScreen(handle));
    EXPECT_FALSE(windows().isOnScreen(handleOf(*cover)));

    windows().minimise(handle);
    EXPECT_FALSE(windows().isOnScreen(handle));
    EXPECT_FALSE(windows().isOnScreen(0));
    windows().bringHere(0);
}

TEST_P(WindowsPort, findsAWindowByItsWholeTitle)
{
    const auto other = startProbe(u"Überschrift 标题"_s, {700, 500, 300, 200});
    ASSERT_TRUE(isReadyForUse(*other));
    EXPECT_EQ(windows().byTitle(u"Überschrift 标题"_s), handleOf(*other));
    EXPECT_EQ(windows().byTitle(u"Probe"_s), handle);
    EXPECT_EQ(windows().byTitle(u"Prob"_s), 0);
    EXPECT_EQ(windows().byTitle(u"probe"_s), 0);
}

TEST_P(WindowsPort, readsTheRectangleOfTheFrame)
{
    EXPECT_EQ(windows().rectangle(handle), frame());
    EXPECT_NE(windows().rectangle(handle), view->clientRectangle(probe->window()));
}

TEST_P(WindowsPort, movesTheOuterCornerToThePixel)
{
    const QSize size = frame().size();
    for (const QPoint corner : {QPoint(0, 0), QPoint(417, 133), QPoint(3, 388), QPoint(640, 5)}) {
        windows().moveTo(handle, corner);
        EXPECT_EQ(frame(), QRect(corner, size));
        EXPECT_EQ(windows().rectangle(handle), QRect(corner, size));
    }
}

TEST_P(WindowsPort, movesTheFrameToWhereTheInsideOfTheWindowIs)
{
    const QPoint inside = view->clientRectangle(probe->window()).topLeft();
    windows().moveTo(handle, inside);
    EXPECT_EQ(frame().topLeft(), inside);
}

TEST_P(WindowsPort, movesAWindowPartlyOffTheScreen)
{
    windows().moveTo(handle, {-50, 200});
    EXPECT_EQ(windows().rectangle(handle), frame());
    EXPECT_EQ(frame().y(), 200);
    // How far is for the window manager to say; this one keeps all but the border on the screen.
    EXPECT_EQ(frame().x(), GetParam() == std::string_view("icewm") ? -5 : -50);
}

TEST_P(WindowsPort, showsAHiddenWindowAtTheCornerItHad)
{
    windows().moveTo(handle, {301, 177});
    const QRect before = frame();
    for (int round = 0; round < 3; ++round) {
        windows().hide(handle);
        EXPECT_FALSE(view->isViewable(probe->window()));
        EXPECT_FALSE(view->isListed(probe->window()));
        EXPECT_EQ(windows().rectangle(handle), before);
        windows().show(handle);
        EXPECT_TRUE(view->isViewable(probe->window()));
        EXPECT_EQ(frame(), before) << round;
    }
}

TEST_P(WindowsPort, showsAHiddenWindowWhereItWasMovedMeanwhile)
{
    const QSize size = frame().size();
    windows().hide(handle);
    windows().moveTo(handle, {99, 88});
    EXPECT_EQ(windows().rectangle(handle), QRect(QPoint(99, 88), size));
    windows().show(handle);
    EXPECT_EQ(frame(), QRect(QPoint(99, 88), size));
}

TEST_P(WindowsPort, tellsWhereAWindowIsThatAnotherProcessHid)
{
    windows().moveTo(handle, {301, 177});
    const QRect before = frame();
    windows().hide(handle);
    const auto another = createPlatform(u"/tmp/plum"_s); // with a connection of its own, as another process
    EXPECT_EQ(another->windows().rectangle(handle), before);
    another->windows().moveTo(handle, {77, 66});
    EXPECT_EQ(windows().rectangle(handle), QRect(QPoint(77, 66), before.size()));
    another->windows().show(handle);
    EXPECT_EQ(frame(), QRect(QPoint(77, 66), before.size()));
    EXPECT_EQ(windows().rectangle(handle), frame());
}

TEST_P(WindowsPort, keepsAMaximisedWindowMaximisedThroughHidingAndShowing)
{
    const QRect normal = frame();
    windows().maximise(handle);
    const QRect spread = frame();
    ASSERT_NE(spread, normal);
    windows().hide(handle);
    EXPECT_EQ(windows().rectangle(handle), spread);
    windows().show(handle);
    EXPECT_EQ(frame(), spread);
    EXPECT_EQ(windows().rectangle(handle), spread);
    EXPECT_TRUE(view->hasState(probe->window(), "_NET_WM_STATE_MAXIMIZED_VERT"));
    EXPECT_TRUE(view->hasState(probe->window(), "_NET_WM_STATE_MAXIMIZED_HORZ"));
}

TEST_P(WindowsPort, movesAMaximisedWindowWithItsSize)
{
    windows().maximise(handle);
    const QSize size = frame().size();
    windows().moveTo(handle, {40, 50});
    // How far is for the window manager to say; this one leaves no part of so large a window beyond the
    // screen.
    const QPoint corner = GetParam() == std::string_view("icewm") ? QPoint(-5, -5) : QPoint(40, 50);
    EXPECT_EQ(windows().rectangle(handle), QRect(corner, size));
    EXPECT_EQ(frame(), QRect(corner, size));
}

TEST_P(WindowsPort, movesAndRaisesAnActiveWindowThatIsCovered)
{
    const auto other = startProbe(u"Other"_s, probeArea.translated(60, 60));
    ASSERT_TRUE(isReadyForUse(*other));
    windows().activate(handle);
    outputOf(u"xdotool"_s, {u"windowraise"_s, QString::number(other->window())});
    ASSERT_TRUE(eventually([&] { return view->isAbove(other->window(), probe->window()); }));
    windows().moveTo(handle, {210, 160});
    EXPECT_TRUE(view->isAbove(probe->window(), other->window()));
    EXPECT_TRUE(view->isActive(probe->window()));
}

TEST_P(WindowsPort, leavesAShownWindowAsItIsWhenAskedToShowIt)
{
    const QRect before = frame();
    windows().show(handle);
    EXPECT_EQ(frame(), before);
    EXPECT_TRUE(view->isActive(probe->window()));
}

TEST_P(WindowsPort, minimisesAndRestores)
{
    const QRect before = frame();
    windows().minimise(handle);
    EXPECT_FALSE(view->isViewable(probe->window()));
    EXPECT_TRUE(view->isListed(probe->window()));
    windows().activate(handle);
    EXPECT_TRUE(view->isViewable(probe->window()));
    EXPECT_EQ(windows().foreground(), handle);
    EXPECT_EQ(windows().rectangle(handle), before);
    EXPECT_EQ(frame(), before);
}

TEST_P(WindowsPort, maximisesAShownAndAMinimisedWindow)
{
    windows().minimise(handle);
    windows().maximise(handle);
    EXPECT_TRUE(view->isViewable(probe->window()));
    EXPECT_TRUE(frame().contains(QRect(0, 0, 1280, 800)));
    EXPECT_EQ(windows().rectangle(handle), frame());
}

TEST_P(WindowsPort, bringsAHiddenWindowBackMaximisedOrMinimised)
{
    windows().hide(handle);
    windows().maximise(handle);
    EXPECT_TRUE(view->isViewable(probe->window()));
    EXPECT_TRUE(frame().contains(QRect(0, 0, 1280, 800)));
    windows().hide(handle);
    windows().minimise(handle);
    EXPECT_FALSE(view->isViewable(probe->window()));
    EXPECT_TRUE(view->isListed(probe->window()));
}

TEST_P(WindowsPort, keepsAWindowAboveTheActiveOne)
{
    const auto other = startProbe(u"Other"_s, probeArea.translated(60, 60));
    ASSERT_TRUE(isReadyForUse(*other));
    windows().setTopmost(handle);
    EXPECT_TRUE(view->hasState(probe->window(), "_NET_WM_STATE_ABOVE"));
    EXPECT_TRUE(view->isAbove(probe->window(), other->window()));
    EXPECT_EQ(windows().foreground(), handleOf(*other));
}

TEST_P(WindowsPort, doesNothingWithAWindowThatHasGone)
{
    const auto other = startProbe(u"Other"_s, {700, 500, 300, 200});
    ASSERT_TRUE(isReadyForUse(*other));
    const WindowHandle gone = handleOf(*other);
    other->process().kill();
    ASSERT_TRUE(eventually([&] { return !view->exists(other->window()); }));
    const QRect before = frame();
    QElapsedTimer elapsed;
    elapsed.start();
    constexpr int rounds = 40;
    for (int round = 0; round < rounds; ++round) {
        const WindowHandle none
            = std::array{gone, WindowHandle(0), WindowHandle(1), WindowHandle(-5)}[round % 4];
        windows().close(none);
        windows().activate(none);
        windows().hide(none);
        windows().show(none);
        windows().minimise(none);
        windows().maximise(none);
        windows().moveTo(none, {10, 10});
        windows().setTopmost(none);
        EXPECT_EQ(windows().rectangle(none), QRect());
    }
    // Half a second for one of them alone would be twenty.
    EXPECT_LT(elapsed.elapsed(), 15'000);
    EXPECT_EQ(frame(), before);
}

TEST_P(WindowsPort, keepsOffTheRootWindow)
{
    const WindowHandle root = static_cast<WindowHandle>(view->root());
    windows().hide(root);
    windows().minimise(root);
    windows().moveTo(root, {10, 10});
    EXPECT_TRUE(view->isViewable(view->root()));
}

TEST_P(WindowsPort, waitsNoLongerThanPromisedForAProgramThatHangs)
{
    probe->stop();
    constexpr qint64 promised = 5000; // milliseconds
    EXPECT_LT(test::leastTime(promised, [&] { windows().close(handle); }), promised);
    EXPECT_EQ(windows().rectangle(handle), frame());
}

} // namespace plum
