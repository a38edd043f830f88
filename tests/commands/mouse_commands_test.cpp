#include "commands/mouse_clicks.h"
#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

class MouseScript : public testing::Test
{
protected:
    recording::ScriptBench bench;
};

const QStringList leftClick{u"mouse 2"_s, u"wait 200"_s, u"mouse 4"_s, u"wait 200"_s};
const QStringList doubleClick{u"mouse 6"_s, u"mouse 6"_s, u"wait 100"_s};

QStringList dragged(const QString &from, const QString &to)
{
    return {u"move "_s + from, u"wait 200"_s, u"mouse 2"_s, u"wait 200"_s, u"move "_s + to, u"wait 200"_s,
        u"mouse 4"_s};
}

} // namespace

TEST_F(MouseScript, ClickIsDownWaitUpWait)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.click"_s), leftClick);
}

TEST_F(MouseScript, DoubleClickIsTwoEventsBackToBackAndAWait)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.d_click"_s), doubleClick);
}

TEST_F(MouseScript, RightClickDoesNotWait)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.r_click"_s), (QStringList{u"mouse 8"_s, u"mouse 16"_s}));
}

TEST_F(MouseScript, SingleButtonEvents)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.l_down"_s), QStringList{u"mouse 2"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.l_up"_s), QStringList{u"mouse 4"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.r_down"_s), QStringList{u"mouse 8"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.r_up"_s), QStringList{u"mouse 16"_s});
}

TEST_F(MouseScript, MoveGoesToThePoint)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.move \"10:-20\""_s), QStringList{u"move 10 -20"_s});
}

TEST_F(MouseScript, MoveWithOneNumberMeansBothCoordinates)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.move \"100\""_s), QStringList{u"move 100 100"_s});
}

TEST_F(MouseScript, MoveWithoutAPointDoesNothing)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.move"_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"mouse.move "_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"mouse.move \"\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"mouse.move 100"_s), QStringList()) << "unquoted is empty";
}

TEST_F(MouseScript, MoveTakesAVariable)
{
    bench.platform.pointer().at = QPoint(7, 8);
    EXPECT_EQ(bench.eventsOf(u"mouse.move mouse.xy"_s), QStringList{u"move 7 8"_s});
}

TEST_F(MouseScript, APointOutOfRangeOrNoPointIsAnError)
{
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.move \"40000:1\""_s}); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.move \"a:b\""_s}); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.drag \"1:1\",\"x\""_s}); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.drag_to"_s}); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.after_offset"_s}); }), RunTimeError::TypeMismatch);
}

TEST_F(MouseScript, GetStoresThePosition)
{
    bench.platform.pointer().at = QPoint(10, 20);
    bench.runKeepingVariables({u"mouse.get_xy \"p\""_s, u"mouse.get_x \"x\""_s, u"mouse.get_y \"y\""_s});
    EXPECT_EQ(bench.variable(u"p"_s), u"10:20"_s);
    EXPECT_EQ(bench.variable(u"x"_s), u"10"_s);
    EXPECT_EQ(bench.variable(u"y"_s), u"20"_s);
}

TEST_F(MouseScript, GetTakesOnlyItsFirstField)
{
    bench.platform.pointer().at = QPoint(10, 20);
    bench.runKeepingVariables(
        {u"mouse.get_xy \"p\",\"q\""_s, u"mouse.get_x \"x\",\"q\""_s, u"mouse.get_y \"y\",\"q\""_s});
    EXPECT_EQ(bench.variable(u"p"_s), u"10:20"_s);
    EXPECT_EQ(bench.variable(u"x"_s), u"10"_s);
    EXPECT_EQ(bench.variable(u"y"_s), u"20"_s);
    EXPECT_EQ(bench.state.vardict.size(), 3);
}

TEST_F(MouseScript, MovesTakeOnlyTheirFirstField)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.move \"10:20\",\"30:40\""_s), QStringList{u"move 10 20"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.offset \"1:1\",\"30:40\""_s), QStringList{u"move 11 21"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.move ,\"30:40\""_s), QStringList());
}

TEST_F(MouseScript, OffsetMovesFromWhereThePointerIs)
{
    bench.platform.pointer().at = QPoint(10, 20);
    EXPECT_EQ(bench.eventsOf(u"mouse.offset \"5:-5\""_s), QStringList{u"move 15 15"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.offset \"3\""_s), QStringList{u"move 18 18"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.offset"_s), QStringList());
}

TEST_F(MouseScript, OffsetsWrapAtSixteenBits)
{
    bench.platform.pointer().at = QPoint(32767, 0);
    EXPECT_EQ(bench.eventsOf(u"mouse.offset \"1:0\""_s), QStringList{u"move -32768 0"_s});
}

TEST_F(MouseScript, OffsetFromAPlaceBeyondSixteenBitsOverflows)
{
    bench.platform.pointer().at = QPoint(32768, 0);
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.offset \"-1:0\""_s}); }), RunTimeError::Overflow);
}

TEST_F(MouseScript, WhileClickRepeatsItsCount)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.while_click \"3\",\"d_click\",\"500\""_s),
        doubleClick + QStringList{u"wait 500"_s} + doubleClick + QStringList{u"wait 500"_s} + doubleClick
            + QStringList{u"wait 500"_s});
    EXPECT_EQ(
        bench.eventsOf(u"mouse.while_click \"1\",\"click\",\"7\""_s), leftClick + QStringList{u"wait 7"_s});
}

TEST_F(MouseScript, WhileClickOfAnotherKindOnlyWaits)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.while_click \"2\",\"r_click\",\"5\""_s),
        (QStringList{u"wait 5"_s, u"wait 5"_s}));
}

TEST_F(MouseScript, WhileClickOfNoTimesDoesNothing)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.while_click \"0\",\"click\",\"5\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"mouse.while_click \"-3\",\"click\",\"5\""_s), QStringList());
}

TEST_F(MouseScript, WhileClickCountsInSixteenBits)
{
    bench.waiter.records = false;
    EXPECT_EQ(
        raisedBy([&] { bench.run({u"mouse.while_click \"32768\",\"\",\"5\""_s}); }), RunTimeError::Overflow);
    int waits = 0;
    bench.waiter.onWait = [&] { ++waits; };
    bench.run({u"mouse.while_click \"32767\",\"\",\"5\""_s});
    EXPECT_EQ(waits, 32767 + 1);
}

TEST_F(MouseScript, WhileClickWithoutACountNeverEnds)
{
    struct Enough
    {
    };
    bench.waiter.records = false;
    int waits = 0;
    bench.waiter.onWait = [&] {
        if (++waits == 100'000)
            throw Enough();
    };
    EXPECT_THROW(bench.run({u"mouse.while_click \"\",\"\",\"5\""_s}), Enough);
}

TEST_F(MouseScript, WhileClickWithoutAnIntervalFailsAfterTheFirstClick)
{
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.while_click \"2\",\"click\",\"\""_s}); }),
        RunTimeError::TypeMismatch);
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 1);
}

TEST_F(MouseScript, AfterOffsetMoves)
{
    EXPECT_EQ(
        bench.eventsOf(u"mouse.after_offset \"100:100\",\"5:-5\",\"move\""_s), QStringList{u"move 105 95"_s});
    EXPECT_EQ(
        bench.eventsOf(u"mouse.after_offset \"100:100\",\"5:-5\",\"\""_s), QStringList{u"move 105 95"_s});
    EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"100\",\"5\","_s), QStringList{u"move 105 105"_s});
}

TEST_F(MouseScript, AfterOffsetClicksThere)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"100:100\",\"5:-5\",\"click\""_s),
        QStringList{u"move 105 95"_s} + leftClick);
    EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"100:100\",\"5:-5\",\"d_click\""_s),
        QStringList{u"move 105 95"_s} + doubleClick);
}

TEST_F(MouseScript, AfterOffsetRightClicksWhereThePointerIs)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"100:100\",\"5:-5\",\"r_click\""_s),
        (QStringList{u"mouse 8"_s, u"mouse 16"_s}));
}

TEST_F(MouseScript, AfterOffsetShowsThePointInASystemModalMessage)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"100:100\",\"5:-5\",\"tips\""_s),
        QStringList{u"message |105:95|4096"_s});
}

TEST_F(MouseScript, AfterOffsetStoresThePointInAnyOtherName)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"100:100\",\"5:5\",\"pt\""_s), QStringList());
    EXPECT_EQ(bench.variable(u"pt"_s), u"105:105"_s);
    bench.runKeepingVariables({u"mouse.after_offset \"1:1\",\"1:1\",\"Click\""_s});
    EXPECT_EQ(bench.variable(u"Click"_s), u"2:2"_s);
}

TEST_F(MouseScript, AfterOffsetWrapsAtSixteenBits)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"32767:-32768\",\"1:-1\",\"move\""_s),
        QStringList{u"move -32768 32767"_s});
}

TEST_F(MouseScript, AfterOffsetWithoutAnActionFieldIsASubscriptError)
{
    EXPECT_EQ(raisedBy([&] { bench.run({u"mouse.after_offset \"100:100\",\"5:5\""_s}); }),
        RunTimeError::SubscriptOutOfRange);
}

TEST_F(MouseScript, DragEndsAtThePoint)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.drag \"10:10\",\"90:0\""_s), dragged(u"10 10"_s, u"90 0"_s));
}

TEST_F(MouseScript, DragToEndsAtTheOffset)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.drag_to \"10:10\",\"90:0\""_s), dragged(u"10 10"_s, u"100 10"_s));
    EXPECT_EQ(bench.eventsOf(u"mouse.drag_to \"32767:0\",\"1:0\""_s), dragged(u"32767 0"_s, u"-32768 0"_s));
}

TEST_F(MouseScript, UnknownCommandsDoNothing)
{
    EXPECT_EQ(bench.eventsOf(u"mouse.m_click"_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"mouse.Click"_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"mouse."_s), QStringList());
}

TEST(MouseClicks, ShareTheirCounterWithAClickInsideTheirWaits)
{
    recording::ScriptBench bench;
    MouseClicks clicks(bench.platform.pointer(), bench.waiter);
    int waits = 0;
    bench.waiter.onWait = [&] {
        if (++waits == 1)
            clicks.doubleClick(2);
    };
    clicks.leftClick(3);
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 1) << "the double clicks counted to the end of both";
    EXPECT_EQ(bench.events().count(u"mouse 6"_s), 4);
}

TEST(MouseClicks, RepeatAsOftenAsAsked)
{
    recording::ScriptBench bench;
    MouseClicks clicks(bench.platform.pointer(), bench.waiter);
    clicks.leftClick(2);
    EXPECT_EQ(bench.events(), leftClick + leftClick);
    bench.platform.log.clear();
    clicks.doubleClick(2);
    EXPECT_EQ(bench.events(), doubleClick + doubleClick);
    bench.platform.log.clear();
    clicks.leftClick(0);
    clicks.doubleClick(-1);
    EXPECT_EQ(bench.events(), QStringList());
}

TEST_F(MouseScript, AfterOffsetTakesWordsOfTheSearchesForVariables)
{
    for (const QString &word : {u"get_xy"_s, u"get_x"_s, u"get_y"_s, u"set_clipboard"_s}) {
        EXPECT_EQ(bench.eventsOf(u"mouse.after_offset \"1:2\",\"3:4\",\"%1\""_s.arg(word)), QStringList());
        EXPECT_EQ(bench.variable(word), u"4:6");
    }
}
