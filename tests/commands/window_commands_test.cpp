#include "commands/window_commands.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

// A window 77 from x 100 to 400 and from y 50 to 250.
class WindowScript : public testing::Test
{
protected:
    WindowScript()
    {
        bench.platform.windows().foregroundWindow = 77;
        bench.platform.windows().windowUnderPointer = 88;
        bench.platform.windows().rectangles.insert(77, QRect(100, 50, 300, 200));
    }

    QString stored(const QString &selector, const QString &handle = u"77"_s)
    {
        bench.runKeepingVariables({u"window.get \"%1\",\"%2\",\"v\""_s.arg(selector, handle)});
        return bench.variable(u"v"_s);
    }

    QStringList eventsOf(const QString &fields) { return bench.eventsOf(u"window.set "_s + fields); }

    recording::ScriptBench bench;
};

using WindowGet = WindowScript;
using WindowSet = WindowScript;

} // namespace

TEST_F(WindowGet, ActiveWindow)
{
    bench.runKeepingVariables({u"window.get \"active_window\",\"h\""_s});
    EXPECT_EQ(bench.variable(u"h"_s), u"77"_s);
}

TEST_F(WindowGet, MouseWindow)
{
    bench.runKeepingVariables({u"window.get \"mouse_window\",\"h\""_s});
    EXPECT_EQ(bench.variable(u"h"_s), u"88"_s);
}

TEST_F(WindowGet, PartsOfTheRectangle)
{
    EXPECT_EQ(stored(u"window_xy"_s), u"100:50"_s);
    EXPECT_EQ(stored(u"window_left"_s), u"100"_s);
    EXPECT_EQ(stored(u"window_top"_s), u"50"_s);
    EXPECT_EQ(stored(u"window_right"_s), u"400"_s);
    EXPECT_EQ(stored(u"window_bottom"_s), u"250"_s);
    EXPECT_EQ(stored(u"window_width"_s), u"300"_s);
    EXPECT_EQ(stored(u"window_height"_s), u"200"_s);
}

TEST_F(WindowGet, AWindowThatHasGoneHasNoRectangle)
{
    EXPECT_EQ(stored(u"window_xy"_s, u"5"_s), u"0:0"_s);
    EXPECT_EQ(stored(u"window_right"_s, u"5"_s), u"0"_s);
    EXPECT_EQ(stored(u"window_width"_s, u"5"_s), u"0"_s);
}

TEST_F(WindowGet, AHandleThatIsNoNumberIsSkippedAndTheRestGoesOn)
{
    EXPECT_EQ(stored(u"window_xy"_s, u"abc"_s), u"0:0"_s);
    EXPECT_EQ(stored(u"window_width"_s, u"99999999999"_s), u"0"_s);
    EXPECT_EQ(stored(u"window_left"_s, QString()), u"0"_s);
}

TEST_F(WindowGet, WithoutAVariableFieldStoresNothing)
{
    bench.runKeepingVariables({u"window.get \"window_xy\",\"77\""_s});
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(WindowGet, AHandleMayBeAVariable)
{
    bench.runKeepingVariables(
        {u"window.get \"active_window\",\"h\""_s, u"window.get \"window_width\",set.h,\"w\""_s});
    EXPECT_EQ(bench.variable(u"w"_s), u"300"_s);
}

TEST_F(WindowGet, UnknownSelectorsDoNothing)
{
    for (const QString &selector : {u"window_size"_s, u"Window_xy"_s, QString(), u"xy"_s})
        EXPECT_EQ(stored(selector), QString());
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(WindowSet, EachSelectorIsOneCall)
{
    EXPECT_EQ(eventsOf(u"\"close\",\"77\""_s), QStringList{u"window close 77"_s});
    EXPECT_EQ(eventsOf(u"\"active_window\",\"77\""_s), QStringList{u"window activate 77"_s});
    EXPECT_EQ(eventsOf(u"\"hide_window\",\"77\""_s), QStringList{u"window hide 77"_s});
    EXPECT_EQ(eventsOf(u"\"show_window\",\"77\""_s), QStringList{u"window show 77"_s});
    EXPECT_EQ(eventsOf(u"\"mix_window\",\"77\""_s), QStringList{u"window minimise 77"_s});
    EXPECT_EQ(eventsOf(u"\"max_window\",\"77\""_s), QStringList{u"window maximise 77"_s});
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\",\"10:-20\""_s), QStringList{u"window move 77 10 -20"_s});
}

TEST_F(WindowSet, MinimisesTheWindowThatWasInFront)
{
    bench.run({u"window.get \"active_window\",\"h\""_s, u"window.set \"mix_window\",set.h"_s});
    EXPECT_EQ(bench.events().last(), u"window minimise 77"_s);
}

TEST_F(WindowSet, MinWindowIsNoSelector)
{
    EXPECT_EQ(eventsOf(u"\"min_window\",\"77\""_s), QStringList());
    EXPECT_EQ(eventsOf(u"\"Close\",\"77\""_s), QStringList());
    EXPECT_EQ(eventsOf(u"\"\",\"77\""_s), QStringList());
}

TEST_F(WindowSet, MoveWithOneNumberMeansBothCoordinates)
{
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\",\"200\""_s), QStringList{u"window move 77 200 200"_s});
}

TEST_F(WindowSet, MoveTakesThirtyTwoBits)
{
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\",\"40000:-40000\""_s),
        QStringList{u"window move 77 40000 -40000"_s});
}

TEST_F(WindowSet, MoveWithoutAPointDoesNothing)
{
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\""_s), QStringList());
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\",\"\""_s), QStringList());
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\",\"a:1\""_s), QStringList());
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\",\"1:b\""_s), QStringList());
    EXPECT_EQ(eventsOf(u"\"move_window\",\"77\",\"9999999999:1\""_s), QStringList());
}

TEST_F(WindowSet, AHandleThatIsNoNumberIsNoWindowAndNoError)
{
    for (const QString &handle : {u"abc"_s, QString(), u"99999999999"_s}) {
        EXPECT_EQ(eventsOf(u"\"close\",\"%1\""_s.arg(handle)), QStringList{u"window close 0"_s});
        EXPECT_EQ(
            eventsOf(u"\"move_window\",\"%1\",\"1:1\""_s.arg(handle)), QStringList{u"window move 0 1 1"_s});
    }
}

TEST_F(WindowSet, TheScriptGoesOnAfterABadHandle)
{
    bench.run({u"window.set \"close\",\"abc\""_s, u"window.get \"window_xy\""_s, u"mouse.l_down"_s});
    EXPECT_EQ(bench.events().last(), u"mouse 2"_s);
}

TEST_F(WindowScript, TheSelectorsAreTestedInOrder)
{
    const auto wordsOf = [](std::span<const WindowCommands::Selector> selectors) {
        QStringList words;
        for (const WindowCommands::Selector &selector : selectors)
            words += selector.info.word.toString();
        return words;
    };
    EXPECT_EQ(wordsOf(WindowCommands::getSelectors()),
        (QStringList{u"active_window"_s, u"mouse_window"_s, u"window_xy"_s, u"window_left"_s, u"window_top"_s,
            u"window_right"_s, u"window_bottom"_s, u"window_width"_s, u"window_height"_s}));
    EXPECT_EQ(wordsOf(WindowCommands::setSelectors()),
        (QStringList{u"close"_s, u"active_window"_s, u"hide_window"_s, u"show_window"_s, u"mix_window"_s,
            u"max_window"_s, u"move_window"_s}));
}

TEST_F(WindowScript, UnknownCommandsDoNothing)
{
    EXPECT_EQ(bench.eventsOf(u"window.Set \"close\",\"77\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"window.close \"77\""_s), QStringList());
}
