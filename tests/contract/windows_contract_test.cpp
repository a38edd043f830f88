#include "contract/contract_test.h"

#include "platform/pointer.h"
#include "platform/screen.h"

#include <algorithm>
#include <vector>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

constexpr QRect otherArea{720, 480, 300, 200};

// What can be seen through the port alone.
class WindowsPort : public ContractTest
{
protected:
    void SetUp() override
    {
        ContractTest::SetUp();
        if (!platform)
            return;
        window = openWindow();
        ASSERT_TRUE(window);
        handle = window->handle();
    }

    Windows &windows() { return platform->windows(); }

    // Whether `upper` covers `lower` where both are.
    bool isAbove(WindowHandle upper, WindowHandle lower)
    {
        const std::vector<WindowHandle> all = windows().stacking();
        const auto place = std::ranges::find(all, upper);
        return place != all.end() && std::find(place, all.end(), lower) != all.end();
    }

    // It has the keyboard, and covers the other one.
    // A window that has been given the keyboard, too, which may come a little after it is painted.
    std::unique_ptr<PeerWindow> openInFront(const QString &title)
    {
        auto opened = openWindow(title, otherArea);
        EXPECT_TRUE(!opened || waitUntil([&] { return windows().foreground() == opened->handle(); }));
        return opened;
    }

    void expectInFront(WindowHandle upper, WindowHandle lower)
    {
        EXPECT_EQ(windows().foreground(), upper);
        EXPECT_TRUE(isAbove(upper, lower));
    }

    std::unique_ptr<PeerWindow> window;
    WindowHandle handle = 0;
};

// What the program itself, the pointer or the screen has to tell.
class WindowsOnScreen : public WindowsPort
{
protected:
    bool isVisible() { return isPainted(window->inside().topLeft(), PeerWindow::topLeftCorner); }

    bool isPainted(QPoint point, quint32 colour)
    {
        const Capture capture = platform->screen().capture({point, QSize(1, 1)});
        return !capture.isEmpty() && (capture.pixels.front() & 0xffffff) == colour;
    }

    // Whether the pointer finds another one, or none, there.
    bool isAway(QPoint point)
    {
        return waitUntil([&] {
            platform->pointer().moveTo(point);
            return windows().underPointer() != handle;
        });
    }

    // Whether the pointer finds `window` at a point. The pointer may be held up on its way by events of the
    // moves before.
    bool isAt(QPoint point, WindowHandle wanted)
    {
        return waitUntil([&] {
            platform->pointer().moveTo(point);
            return windows().underPointer() == wanted;
        });
    }
};

} // namespace

TEST_F(WindowsPort, knowsTheWindowInFront)
{
    EXPECT_EQ(windows().foreground(), handle);
    const auto other = openWindow(u"Other"_s, otherArea);
    ASSERT_TRUE(other);
    EXPECT_EQ(windows().foreground(), other->handle());
}

TEST_F(WindowsPort, findsAWindowByItsWholeTitle)
{
    const auto other = openWindow(u"Überschrift 标题"_s, otherArea);
    ASSERT_TRUE(other);
    EXPECT_EQ(windows().byTitle(u"Überschrift 标题"_s), other->handle());
    EXPECT_EQ(windows().byTitle(u"Peer window"_s), handle);
    EXPECT_EQ(windows().byTitle(u"Peer windo"_s), 0);
    EXPECT_EQ(windows().byTitle(u"eer window"_s), 0);
    EXPECT_EQ(windows().byTitle(u"No such window"_s), 0);
    EXPECT_EQ(windows().title(other->handle()), u"Überschrift 标题"_s);
    EXPECT_EQ(windows().title(handle), u"Peer window"_s);
}

TEST_F(WindowsPort, readsTheRectangleWithTheFrame)
{
    EXPECT_EQ(windows().rectangle(handle), window->frame());
    EXPECT_TRUE(windows().rectangle(handle).contains(window->inside(), true));
}

TEST_F(WindowsPort, movesTheOuterCornerAndKeepsTheSize)
{
    const QSize size = windows().rectangle(handle).size();
    for (const QPoint corner : {QPoint(0, 0), QPoint(417, 133), QPoint(3, 388), QPoint(640, 5)}) {
        windows().moveTo(handle, corner);
        EXPECT_EQ(windows().rectangle(handle), QRect(corner, size));
        EXPECT_TRUE(waitUntil([&] { return window->frame() == QRect(corner, size); }));
    }
}

TEST_F(WindowsPort, movesAWindowPartlyOffTheScreen)
{
    const QSize size = windows().rectangle(handle).size();
    windows().moveTo(handle, {-50, 200});
    EXPECT_EQ(windows().rectangle(handle), QRect(QPoint(-50, 200), size));
}

TEST_F(WindowsPort, hidesFromTheListsAndShowsAtTheSameCorner)
{
    windows().moveTo(handle, {301, 177});
    const QRect before = windows().rectangle(handle);
    for (int round = 0; round < 3; ++round) {
        windows().hide(handle);
        EXPECT_EQ(windows().rectangle(handle), before);
        windows().show(handle);
        EXPECT_EQ(windows().byTitle(u"Peer window"_s), handle);
        EXPECT_EQ(windows().rectangle(handle), before) << round;
    }
}

TEST_F(WindowsPort, activatesAWindowBehindAnother)
{
    const auto other = openWindow(u"Other"_s, otherArea);
    ASSERT_TRUE(other);
    windows().activate(handle);
    EXPECT_EQ(windows().foreground(), handle);
    windows().activate(other->handle());
    EXPECT_EQ(windows().foreground(), other->handle());
}

TEST_F(WindowsPort, movingAWindowBringsItToTheFront)
{
    const auto other = openInFront(u"Other"_s);
    ASSERT_TRUE(other);
    expectInFront(other->handle(), handle);
    windows().moveTo(handle, {60, 70});
    expectInFront(handle, other->handle());
    windows().moveTo(other->handle(), {300, 100});
    expectInFront(other->handle(), handle);
}

TEST_F(WindowsPort, showingAShownWindowBringsItToTheFront)
{
    const auto other = openInFront(u"Other"_s);
    ASSERT_TRUE(other);
    const QRect before = windows().rectangle(handle);
    windows().show(handle);
    expectInFront(handle, other->handle());
    EXPECT_EQ(windows().rectangle(handle), before);
}

TEST_F(WindowsPort, showingAHiddenWindowBringsItToTheFront)
{
    const auto other = openInFront(u"Other"_s);
    ASSERT_TRUE(other);
    windows().hide(handle);
    windows().show(handle);
    expectInFront(handle, other->handle());
}

TEST_F(WindowsPort, movingAHiddenWindowLeavesItHidden)
{
    const auto other = openInFront(u"Other"_s);
    ASSERT_TRUE(other);
    const QSize size = windows().rectangle(handle).size();
    windows().hide(handle);
    windows().moveTo(handle, {99, 88});
    EXPECT_EQ(windows().rectangle(handle), QRect(QPoint(99, 88), size));
    EXPECT_FALSE(isAbove(handle, handle)); // in no order at all
    EXPECT_EQ(windows().foreground(), other->handle());
    windows().show(handle);
    EXPECT_EQ(windows().rectangle(handle), QRect(QPoint(99, 88), size));
    expectInFront(handle, other->handle());
}

TEST_F(WindowsPort, doesNothingWithAWindowThatIsNot)
{
    const auto other = openWindow(u"Other"_s, otherArea);
    ASSERT_TRUE(other);
    const WindowHandle gone = other->handle();
    other->kill();
    ASSERT_TRUE(waitUntil([&] { return windows().byTitle(u"Other"_s) == 0; }));
    const QRect before = windows().rectangle(handle);
    for (const WindowHandle none : {gone, WindowHandle(0), WindowHandle(1), WindowHandle(-5)}) {
        windows().close(none);
        windows().activate(none);
        windows().hide(none);
        windows().show(none);
        windows().minimise(none);
        windows().maximise(none);
        windows().moveTo(none, {10, 10});
        windows().bringHere(none);
        windows().setTopmost(none);
        EXPECT_EQ(windows().rectangle(none), QRect()) << none;
        EXPECT_EQ(windows().title(none), QString()) << none;
    }
    EXPECT_EQ(windows().rectangle(handle), before);
    EXPECT_EQ(windows().byTitle(u"Peer window"_s), handle);
}

TEST_F(WindowsPort, aHiddenWindowHasNoTitleToBeFoundBy)
{
    windows().hide(handle);
    EXPECT_EQ(windows().byTitle(u"Peer window"_s), 0);
}

TEST_F(WindowsPort, tellsOfWindowsThatCome)
{
    const std::unique_ptr<News> titles = windows().newsOfTitles();
    ASSERT_TRUE(titles);
    EXPECT_TRUE(titles->arrived());
    const auto other = openWindow(u"Other"_s, otherArea);
    ASSERT_TRUE(other);
    EXPECT_TRUE(waitUntil([&] { return titles->arrived() && windows().byTitle(u"Other"_s) != 0; }));
}

TEST_F(WindowsPort, tellsOfTheEndOfAWindow)
{
    const auto other = openWindow(u"Other"_s, otherArea);
    ASSERT_TRUE(other);
    const std::unique_ptr<News> end = windows().newsOfEnd(other->handle());
    ASSERT_TRUE(end);
    EXPECT_TRUE(end->arrived());
    EXPECT_FALSE(end->arrived());
    other->kill();
    EXPECT_TRUE(waitUntil([&] { return end->arrived(); }));
    EXPECT_TRUE(windows().rectangle(other->handle()).isNull());
}

TEST_F(WindowsOnScreen, isTheOneUnderThePointer)
{
    EXPECT_TRUE(isAt(window->inside().center(), handle));
}

TEST_F(WindowsOnScreen, noneIsUnderThePointerOverTheBareDesktop)
{
    EXPECT_TRUE(isAt({1150, 40}, 0));
}

TEST_F(WindowsOnScreen, isUnderThePointerWithItsTitleBar)
{
    const QRect frame = window->frame();
    EXPECT_TRUE(isAt({frame.center().x(), (frame.top() + window->inside().top()) / 2}, handle));
}

TEST_F(WindowsOnScreen, hiddenIsNotThereAndShownIsThereAgain)
{
    windows().hide(handle);
    EXPECT_TRUE(isAway(window->inside().center()));
    EXPECT_TRUE(waitUntil([&] { return !isVisible(); }));
    windows().show(handle);
    EXPECT_TRUE(isAt(window->inside().center(), handle));
    EXPECT_TRUE(waitUntil([&] { return isVisible(); }));
}

TEST_F(WindowsOnScreen, isOnScreenUnlessHiddenMinimisedOrGone)
{
    EXPECT_TRUE(windows().isOnScreen(handle));
    windows().minimise(handle);
    EXPECT_FALSE(windows().isOnScreen(handle));
    windows().maximise(handle);
    EXPECT_TRUE(windows().isOnScreen(handle));
    windows().hide(handle);
    EXPECT_FALSE(windows().isOnScreen(handle));
    windows().show(handle);
    EXPECT_TRUE(windows().isOnScreen(handle));
    window->kill();
    EXPECT_TRUE(waitUntil([&] { return !windows().isOnScreen(handle); }));
    EXPECT_FALSE(windows().isOnScreen(0));
}

TEST_F(WindowsOnScreen, hiddenComesBackMinimised)
{
    windows().hide(handle);
    windows().minimise(handle);
    EXPECT_FALSE(windows().isOnScreen(handle));
    EXPECT_EQ(windows().byTitle(u"Peer window"_s), handle);
    windows().maximise(handle);
    EXPECT_TRUE(windows().isOnScreen(handle));
}

TEST_F(WindowsOnScreen, hiddenComesBackMaximised)
{
    windows().hide(handle);
    windows().maximise(handle);
    EXPECT_TRUE(windows().isOnScreen(handle));
    EXPECT_GE(windows().rectangle(handle).width(), platform->screen().mainScreenSize().width());
}

TEST_F(WindowsOnScreen, maximisedIsStillMaximisedWhenItWasHidden)
{
    windows().maximise(handle);
    ASSERT_TRUE(waitUntil([&] { return !window->seen({u"maximised"_s}).isEmpty(); }));
    const QRect spread = windows().rectangle(handle);
    windows().hide(handle);
    EXPECT_EQ(windows().rectangle(handle), spread);
    window->forget();
    windows().show(handle);
    EXPECT_EQ(windows().rectangle(handle), spread);
    EXPECT_TRUE(waitUntil([&] { return window->frame() == spread; }));
}

TEST_F(WindowsOnScreen, maximisedIsMovedWithItsSize)
{
    windows().maximise(handle);
    ASSERT_TRUE(waitUntil([&] { return !window->seen({u"maximised"_s}).isEmpty(); }));
    const QSize size = windows().rectangle(handle).size();
    windows().moveTo(handle, {70, 90});
    EXPECT_EQ(windows().rectangle(handle), QRect(QPoint(70, 90), size));
    EXPECT_TRUE(waitUntil([&] { return window->frame() == QRect(QPoint(70, 90), size); }));
}

TEST_F(WindowsOnScreen, minimisedStaysMinimisedWhenItIsMovedOrShown)
{
    windows().minimise(handle);
    ASSERT_FALSE(windows().isOnScreen(handle));
    windows().show(handle);
    EXPECT_FALSE(windows().isOnScreen(handle));
    windows().moveTo(handle, {70, 90});
    EXPECT_FALSE(windows().isOnScreen(handle));
}

TEST_F(WindowsOnScreen, thatIsHereIsNotChangedByFetchingIt)
{
    const QRect before = windows().rectangle(handle);
    const auto other = openWindow(u"Other"_s, otherArea);
    ASSERT_TRUE(other);
    windows().bringHere(handle);
    EXPECT_EQ(windows().rectangle(handle), before);
    EXPECT_EQ(windows().foreground(), other->handle());
}

TEST_F(WindowsOnScreen, minimisedIsRestoredByActivating)
{
    const QRect before = windows().rectangle(handle);
    windows().minimise(handle);
    EXPECT_TRUE(isAway(before.center()));
    EXPECT_TRUE(waitUntil([&] { return !window->seen({u"minimised"_s}).isEmpty(); }));
    EXPECT_EQ(windows().byTitle(u"Peer window"_s), handle);
    windows().activate(handle);
    EXPECT_EQ(windows().foreground(), handle);
    EXPECT_EQ(windows().rectangle(handle), before);
    EXPECT_TRUE(isAt(before.center(), handle));
    EXPECT_TRUE(waitUntil([&] { return isVisible(); }));
}

TEST_F(WindowsOnScreen, maximisedFillsTheScreen)
{
    windows().maximise(handle);
    EXPECT_TRUE(waitUntil([&] { return !window->seen({u"maximised"_s}).isEmpty(); }));
    const QSize screen = platform->screen().mainScreenSize();
    const QRect rectangle = windows().rectangle(handle);
    EXPECT_GE(rectangle.width(), screen.width());
    EXPECT_GE(rectangle.height(), screen.height() - 60); // a task bar may have its place
}

TEST_F(WindowsOnScreen, maximisesWhatWasMinimised)
{
    windows().minimise(handle);
    ASSERT_TRUE(waitUntil([&] { return !window->seen({u"minimised"_s}).isEmpty(); }));
    windows().maximise(handle);
    EXPECT_TRUE(waitUntil([&] { return !window->seen({u"maximised"_s}).isEmpty(); }));
    EXPECT_GE(windows().rectangle(handle).width(), platform->screen().mainScreenSize().width());
}

TEST_F(WindowsOnScreen, topmostStaysAboveTheOneInFront)
{
    const QRect area = window->inside();
    const auto other = openWindow(u"Other"_s, area.translated(60, 60));
    ASSERT_TRUE(other);
    const QPoint both = area.center() + QPoint(60, 60);
    ASSERT_TRUE(isAt(both, other->handle()));
    const QRect before = windows().rectangle(handle);
    windows().setTopmost(handle);
    EXPECT_TRUE(isAt(both, handle));
    EXPECT_EQ(windows().rectangle(handle), before);
    EXPECT_EQ(windows().foreground(), other->handle());
}

TEST_F(WindowsOnScreen, isAskedToClose)
{
    windows().close(handle);
    EXPECT_TRUE(waitUntil([&] { return !window->seen({u"close"_s}).isEmpty(); }));
    EXPECT_TRUE(waitUntil([&] { return windows().byTitle(u"Peer window"_s) == 0; }));
}

TEST_F(WindowsOnScreen, thatHangsIsNotWaitedFor)
{
    tap('H');
    ASSERT_TRUE(waitUntil([&] { return !window->seen({u"hangs"_s}).isEmpty(); }));
    // Each returns while the program hangs.
    windows().moveTo(handle, {40, 50});
    EXPECT_FALSE(windows().rectangle(handle).isEmpty());
    windows().minimise(handle);
    windows().close(handle);
    EXPECT_TRUE(window->seen({u"close"_s}).isEmpty());
    window->goOn();
}

} // namespace plum::contract
