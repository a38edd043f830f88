#include "support/probe_handler.h"
#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

class WhileLoop : public testing::Test
{
protected:
    WhileLoop()
    {
        bench.loop.addNamespace(u"file"_s, probe);
        os.next = Next::Suspend;
        bench.loop.addNamespace(u"os"_s, os);
    }

    // How often the body of a loop with this head runs.
    qsizetype passes(const QString &whileArguments)
    {
        probe.calls.clear();
        bench.run({u"while.start "_s + whileArguments, u"file.body "_s, u"while.end"_s});
        return probe.calls.size();
    }

    // The commands of the namespace "file" in the order in which they ran, without their arguments.
    QString orderOf(const QStringList &lines)
    {
        bench.run(lines);
        QString order;
        for (const QString &call : probe.calls)
            order += call.section(u'|', 0, 0);
        return order;
    }

    recording::ScriptBench bench;
    recording::ProbeHandler probe;
    recording::ProbeHandler os;
};

} // namespace

TEST_F(WhileLoop, CountThreeRunsTheBodyThreeTimes)
{
    EXPECT_EQ(passes(u"\"count\",\"3\""_s), 3);
}

TEST_F(WhileLoop, CountOneRunsTheBodyOnce)
{
    EXPECT_EQ(passes(u"\"count\",\"1\""_s), 1);
}

TEST_F(WhileLoop, CountZeroRunsTheBodyOnce)
{
    EXPECT_EQ(passes(u"\"count\",\"0\""_s), 1);
}

TEST_F(WhileLoop, ANegativeCountRunsTheBodyOnce)
{
    EXPECT_EQ(passes(u"\"count\",\"-2\""_s), 1);
    EXPECT_EQ(passes(u"\"count\",\"-99999\""_s), 1);
}

TEST_F(WhileLoop, AnEmptyCountIsATypeMismatch)
{
    EXPECT_EQ(raisedBy([&] { passes(u"\"count\",\"\""_s); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { passes(u"\"count\",3"_s); }), RunTimeError::TypeMismatch) << "unquoted is empty";
}

TEST_F(WhileLoop, ANonNumericCountIsATypeMismatch)
{
    EXPECT_EQ(raisedBy([&] { passes(u"\"count\",\"three\""_s); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { passes(u"\"count\""_s); }), RunTimeError::TypeMismatch)
        << "one piece is both the mode and the count";
}

TEST_F(WhileLoop, TheRepetitionsRoundHalvesToTheEvenNumber)
{
    EXPECT_EQ(passes(u"\"count\",\"2.5\""_s), 2) << "0.5 rounds to 0: one repetition";
    EXPECT_EQ(passes(u"\"count\",\"3.5\""_s), 4) << "1.5 rounds to 2: three repetitions";
    EXPECT_EQ(passes(u"\"count\",\"4.5\""_s), 4) << "2.5 rounds to 2: three repetitions";
    EXPECT_EQ(passes(u"\"count\",\"0.4\""_s), 1);
}

TEST_F(WhileLoop, ACountBeyondSixteenBitsOverflows)
{
    EXPECT_EQ(raisedBy([&] { passes(u"\"count\",\"32770\""_s); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([&] { passes(u"\"count\",\"1e300\""_s); }), RunTimeError::Overflow);
    EXPECT_EQ(probe.calls.size(), 1);
    bench.waiter.records = false;
    EXPECT_EQ(passes(u"\"count\",\"32769\""_s), 32769);
}

TEST_F(WhileLoop, TheCountMayBeAVariable)
{
    bench.run({u"set.n \"3\""_s, u"while.start \"count\",set.n"_s, u"file.a "_s, u"while.end"_s});
    EXPECT_EQ(probe.calls.size(), 3);
}

TEST_F(WhileLoop, UnknownVariablesAreTheirNamesInModeAndCount)
{
    EXPECT_EQ(passes(u"set.count,set.3"_s), 3);
}

TEST_F(WhileLoop, TheCountIsReadAtTheEnd)
{
    EXPECT_EQ(orderOf({u"set.n \"1\""_s, u"while.start \"count\",set.n"_s, u"set.n \"3\""_s, u"file.a "_s,
                  u"while.end"_s}),
        u"aaa"_s);
}

TEST_F(WhileLoop, TheEndIgnoresTheArgumentsItSees)
{
    bench.run({u"while.start \"count\",\"2\""_s, u"mouse.l_down \"x\""_s, u"while.end"_s});
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 2);
    bench.platform.log.clear();
    bench.run({u"while.start \"count\",\"2\""_s, u"mouse.l_down"_s, u"while.end \"count\",\"9\""_s});
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 2);
}

TEST_F(WhileLoop, AClickBeforeTheEndIsRepeatedByTheLoopsOwnCount)
{
    bench.run({u"while.start \"count\",\"2\""_s, u"mouse.click \"count\",\"5\""_s, u"while.end"_s});
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 2);
}

TEST_F(WhileLoop, OtherModesRepeatNothing)
{
    EXPECT_EQ(passes(u"\"Count\",\"3\""_s), 1);
    EXPECT_EQ(passes(u"\"times\",\"3\""_s), 1);
    EXPECT_EQ(passes(u"count,3"_s), 1) << "unquoted is empty";
}

TEST_F(WhileLoop, OtherModesLeaveTheIndicesOfTheRun)
{
    bench.run({u"while.start \"times\",\"3\""_s, u"file.a "_s, u"while.end"_s, u"input.text \"\""_s});
    EXPECT_EQ(bench.state.runidx[1], 3);
    bench.run({u"while.start \"times\",\"3\""_s, u"set.a \"1\""_s, u"while.end"_s});
    EXPECT_EQ(bench.state.vardict.size(), 0) << "the last line ends the run";
}

TEST_F(WhileLoop, AnEndWithoutAStartRepeatsNothing)
{
    EXPECT_EQ(orderOf({u"file.a \"count\",\"3\""_s, u"while.end"_s, u"file.b "_s}), u"ab"_s);
    EXPECT_EQ(bench.state.runidx[1], 2);
}

TEST_F(WhileLoop, OtherCommandsOfWhileAreIgnored)
{
    EXPECT_EQ(orderOf({u"while.start \"count\",\"2\""_s, u"file.a "_s, u"while.stop"_s, u"while.End"_s,
                  u"while.end"_s}),
        u"aa"_s);
}

TEST_F(WhileLoop, GoesOnWithTheLineAfterTheEnd)
{
    EXPECT_EQ(orderOf({u"file.a "_s, u"while.start \"count\",\"2\""_s, u"file.b "_s, u"file.c "_s,
                  u"while.end"_s, u"file.d "_s}),
        u"abcbcd"_s);
}

TEST_F(WhileLoop, LeavesItsBoundsInTheSharedIndices)
{
    bench.run({u"while.start \"count\",\"0\""_s, u"file.a "_s, u"while.end"_s, u"file.b "_s});
    EXPECT_EQ(bench.state.runidx[0], 2) << "the line of while.end";
    EXPECT_EQ(bench.state.runidx[1], 3) << "the last line of the list";
}

TEST_F(WhileLoop, AStartWithoutArgumentsHasThoseOfTheLineBefore)
{
    EXPECT_EQ(
        orderOf({u"file.a \"count\",\"3\""_s, u"while.start"_s, u"file.b "_s, u"while.end"_s}), u"abbb"_s);
}

TEST_F(WhileLoop, AStartSetsTheIndexOfItsBody)
{
    bench.run({u"file.a "_s, u"while.start \"count\",\"2\""_s, u"file.b "_s});
    EXPECT_EQ(bench.state.runidx[0], 2);
}

TEST_F(WhileLoop, VariablesLiveThroughTheRepetitions)
{
    bench.runKeepingVariables(
        {u"set.a \"\""_s, u"while.start \"count\",\"3\""_s, u"set.a +?+x.+(set.a)"_s, u"while.end"_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"x.x.x."_s);
}

TEST_F(WhileLoop, ACommandLineRunFinishesAllPassesAndEndsOnce)
{
    bench.state.runctx[1] = u"jb"_s;
    bench.run({u"while.start \"count\",\"3\""_s, u"mouse.l_down"_s, u"while.end"_s});
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 3);
    EXPECT_EQ(bench.events().count(u"end process"_s), 1);
    EXPECT_EQ(bench.events().last(), u"end process"_s);
}

TEST_F(WhileLoop, AnEmptyBodyEmptiesTheVariablesInEachRepetition)
{
    bench.runKeepingVariables({u"set.a \"1\""_s, u"while.start \"count\",\"2\""_s, u"while.end"_s});
    EXPECT_FALSE(bench.state.vardict.contains(u"a"_s));
    bench.runKeepingVariables({u"set.a \"1\""_s, u"while.start \"count\",\"1\""_s, u"while.end"_s});
    EXPECT_TRUE(bench.state.vardict.contains(u"a"_s)) << "no repetition";
}

TEST_F(WhileLoop, EachRepetitionStartsWithoutCommandAndArguments)
{
    bench.run({u"while.start \"count\",\"2\""_s, u"file"_s, u"file.a 1"_s, u"while.end"_s});
    EXPECT_EQ(probe.calls, (QStringList{u"start|\"count\",\"2\""_s, u"a|1"_s, u"|"_s, u"a|1"_s}));
}

TEST_F(WhileLoop, TwoLoopsInARowRepeatEachItsOwnBody)
{
    EXPECT_EQ(orderOf({u"while.start \"count\",\"2\""_s, u"file.a "_s, u"while.end"_s,
                  u"while.start \"count\",\"3\""_s, u"file.b "_s, u"while.end"_s}),
        u"aabbb"_s);
}

// Kept: loops inside loops share their indices.
TEST_F(WhileLoop, AnOuterEndRepeatsWhatFollowsTheInnerLoop)
{
    EXPECT_EQ(orderOf({u"while.start \"count\",\"2\""_s, u"file.a "_s, u"while.start \"count\",\"3\""_s,
                  u"file.b "_s, u"while.end"_s, u"file.c "_s, u"while.end"_s, u"file.d "_s}),
        u"abbbcccd"_s)
        << "the outer end has the inner loop's count and repeats from the inner end";
}

TEST_F(WhileLoop, AnInnerLoopRepeatsInsideOnePassOfTheBody)
{
    EXPECT_EQ(orderOf({u"while.start \"count\",\"2\""_s, u"while.start \"count\",\"2\""_s, u"file.a "_s,
                  u"while.end"_s}),
        u"aa"_s);
}

TEST_F(WhileLoop, ASuspensionInTheFirstPassLeavesTheLoop)
{
    EXPECT_EQ(orderOf({u"while.start \"count\",\"3\""_s, u"file.a "_s, u"os.tips x"_s, u"file.b "_s,
                  u"while.end"_s, u"file.c "_s}),
        u"a"_s);
    EXPECT_EQ(bench.state.runidx[0], 3);
}

TEST_F(WhileLoop, ASuspensionInsideARepetitionLeavesEveryLevel)
{
    // The body makes its second pass a tip by naming the namespace in the first.
    int pass = 0;
    probe.onCall = [&] {
        if (++pass == 2)
            bench.state.runlist[2] = u"os.tips \"x\""_s;
    };
    EXPECT_EQ(orderOf({u"while.start \"count\",\"5\""_s, u"file.a "_s, u"// no tip in the first pass"_s,
                  u"while.end"_s, u"file.b "_s}),
        u"aa"_s);
    EXPECT_EQ(os.calls.size(), 1);
    EXPECT_EQ(bench.state.runidx[0], 3) << "the line after the tip";
}

TEST_F(WhileLoop, AnErrorInsideARepetitionNamesItsLine)
{
    try {
        bench.run({u"set.n \"1\""_s, u"while.start \"count\",\"3\""_s, u"time.sleep set.n"_s,
            u"set.n \"soon\""_s, u"while.end"_s});
        FAIL() << "no error";
    } catch (const RunTimeError &error) {
        EXPECT_EQ(error.number(), RunTimeError::TypeMismatch);
        EXPECT_EQ(error.line(), 2);
    }
}

TEST_F(WhileLoop, ThousandsOfStartsAndEndsNest)
{
    bench.waiter.records = false;
    const int depth = 10'000;
    QStringList lines = QStringList(depth, u"while.start \"count\",\"2\""_s);
    lines += u"file.a "_s;
    lines += QStringList(depth, u"while.end"_s);
    EXPECT_EQ(orderOf(lines), u"aa"_s);
}
