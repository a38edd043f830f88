#include "desktop/support/script_test.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Scripts have no output of their own here, so they say a number with the pointer: `mouse.move "300"` goes to
// 300,300.
class WindowScripts : public ScriptTest<EveryManagerTest>
{
protected:
    static constexpr QRect otherArea{600, 300, 300, 200};

    QPoint pointerSays(const QString &selector)
    {
        run({u"window.get \"active_window\",\"h\""_s, u"window.get \"%1\",set.h,\"value\""_s.arg(selector),
            u"mouse.move set.value"_s});
        return view->pointer();
    }

    static QPoint twice(int number) { return {number, number}; }

    QRect frame() { return view->frameRectangle(probe->window()); }

    // Runs one line with the active window in `set.h`.
    void runWithActiveWindow(const QString &line) { run({u"window.get \"active_window\",\"h\""_s, line}); }
};

INSTANTIATE_TEST_SUITE_P(Under, WindowScripts, everyManager, managerName);

} // namespace

TEST_P(WindowScripts, getTheOuterCornerOfTheActiveWindow)
{
    EXPECT_EQ(pointerSays(u"window_xy"_s), frame().topLeft());
}

TEST_P(WindowScripts, getEachEdgeOfTheFrame)
{
    EXPECT_EQ(pointerSays(u"window_left"_s), twice(frame().x()));
    EXPECT_EQ(pointerSays(u"window_top"_s), twice(frame().y()));
    EXPECT_EQ(pointerSays(u"window_right"_s), twice(frame().x() + frame().width()));
    EXPECT_EQ(pointerSays(u"window_bottom"_s), twice(frame().y() + frame().height()));
}

TEST_P(WindowScripts, getTheSizeOfTheFrame)
{
    EXPECT_EQ(pointerSays(u"window_width"_s), twice(frame().width()));
    EXPECT_EQ(pointerSays(u"window_height"_s), twice(frame().height()));
}

TEST_P(WindowScripts, getTheWindowUnderThePointer)
{
    const auto other = startProbe(u"Other"_s, otherArea);
    ASSERT_TRUE(isReadyForUse(*other));
    run({u"mouse.move \"%1\""_s.arg(asText(inClient(20, 280))), u"window.get \"mouse_window\",\"h\""_s,
        u"window.get \"window_xy\",set.h,\"corner\""_s, u"mouse.move set.corner"_s});
    EXPECT_EQ(view->pointer(), frame().topLeft());
}

TEST_P(WindowScripts, moveTheOuterCornerAndKeepTheSize)
{
    const QSize before = frame().size();
    runWithActiveWindow(u"window.set \"move_window\",set.h,\"333:222\""_s);
    EXPECT_EQ(frame(), QRect(QPoint(333, 222), before));
}

TEST_P(WindowScripts, moveToOneNumberWithoutAColon)
{
    runWithActiveWindow(u"window.set \"move_window\",set.h,\"200\""_s);
    EXPECT_EQ(frame().topLeft(), QPoint(200, 200));
}

TEST_P(WindowScripts, readBackThePlaceTheyMovedAWindowTo)
{
    run({u"window.get \"active_window\",\"h\""_s, u"window.set \"move_window\",set.h,\"81:64\""_s,
        u"window.get \"window_xy\",set.h,\"corner\""_s, u"mouse.move set.corner"_s});
    EXPECT_EQ(view->pointer(), QPoint(81, 64));
}

TEST_P(WindowScripts, hideAWindowAndShowItAtTheSameCorner)
{
    const QRect before = frame();
    run({u"window.get \"active_window\",\"h\""_s, u"window.set \"hide_window\",set.h"_s,
        u"window.get \"window_xy\",set.h,\"while_hidden\""_s, u"window.set \"show_window\",set.h"_s,
        u"mouse.move set.while_hidden"_s});
    EXPECT_TRUE(view->isViewable(probe->window()));
    EXPECT_EQ(frame(), before);
    EXPECT_EQ(view->pointer(), before.topLeft());
}

TEST_P(WindowScripts, leaveAHiddenWindowHidden)
{
    runWithActiveWindow(u"window.set \"hide_window\",set.h"_s);
    EXPECT_FALSE(view->isViewable(probe->window()));
    EXPECT_FALSE(view->isListed(probe->window()));
}

TEST_P(WindowScripts, minimiseTheWindowInFront)
{
    runWithActiveWindow(u"window.set \"mix_window\",set.h"_s);
    EXPECT_FALSE(view->isViewable(probe->window()));
    EXPECT_TRUE(view->isListed(probe->window()));
    EXPECT_TRUE(probe->sees(u"minimised"_s));
}

TEST_P(WindowScripts, doNothingForTheWordMinWindow)
{
    runWithActiveWindow(u"window.set \"min_window\",set.h"_s);
    EXPECT_TRUE(view->isViewable(probe->window()));
}

TEST_P(WindowScripts, maximise)
{
    runWithActiveWindow(u"window.set \"max_window\",set.h"_s);
    EXPECT_TRUE(probe->sees(u"maximised"_s));
    EXPECT_TRUE(view->hasState(probe->window(), "_NET_WM_STATE_MAXIMIZED_VERT"));
    // A frame may hide its borders beyond the edges, and a panel may keep its place at the bottom.
    EXPECT_TRUE(eventually([&] { return frame().contains(QRect(0, 0, 1280, 800)); }));
}

TEST_P(WindowScripts, activateAWindowBehindAnother)
{
    const auto other = startProbe(u"Other"_s, probeArea.translated(60, 60));
    ASSERT_TRUE(isReadyForUse(*other));
    ASSERT_TRUE(probe->sees(u"focus out"_s));
    probe->forget();
    // The corner of the probe shows beside the other window.
    run({u"mouse.move \"%1\""_s.arg(asText(inClient(5, 200))), u"window.get \"mouse_window\",\"h\""_s,
        u"window.set \"active_window\",set.h"_s});
    EXPECT_TRUE(view->isActive(probe->window()));
    EXPECT_TRUE(probe->sees(u"focus in"_s));
    EXPECT_TRUE(eventually([&] { return view->isAbove(probe->window(), other->window()); }));
}

TEST_P(WindowScripts, restoreAMinimisedWindowByActivatingIt)
{
    run({u"window.get \"active_window\",\"h\""_s, u"window.set \"mix_window\",set.h"_s,
        u"window.set \"active_window\",set.h"_s});
    EXPECT_TRUE(view->isViewable(probe->window()));
    EXPECT_TRUE(view->isActive(probe->window()));
}

TEST_P(WindowScripts, askAWindowToClose)
{
    runWithActiveWindow(u"window.set \"close\",set.h"_s);
    EXPECT_TRUE(probe->sees(u"close"_s));
    EXPECT_TRUE(probe->waitForEnd());
    EXPECT_EQ(probe->process().exitCode(), 0);
}

TEST_P(WindowScripts, goOnWhenAWindowHasGone)
{
    run({u"window.get \"active_window\",\"h\""_s, u"window.set \"close\",set.h"_s,
        u"window.set \"move_window\",set.h,\"10:10\""_s, u"window.set \"max_window\",set.h"_s,
        u"window.set \"mix_window\",set.h"_s, u"window.set \"hide_window\",set.h"_s,
        u"window.set \"show_window\",set.h"_s, u"window.set \"active_window\",set.h"_s,
        u"window.set \"close\",set.h"_s, u"window.get \"window_xy\",set.h,\"corner\""_s,
        u"mouse.move set.corner"_s});
    EXPECT_EQ(view->pointer(), QPoint(0, 0));
}

} // namespace plum
