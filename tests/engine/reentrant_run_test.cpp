#include "support/probe_handler.h"
#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

// A second run that begins while the first one waits, as when the user starts an app from the launcher.
class ReentrantRun : public testing::Test
{
protected:
    ReentrantRun()
    {
        bench.loop.addNamespace(u"file"_s, probe);
        os.next = Next::Suspend;
        bench.loop.addNamespace(u"os"_s, os);
    }

    // Does `action` inside the wait number `wait` of the run, counted from 1.
    void insideWait(int wait, const std::function<void()> &action)
    {
        bench.waiter.onWait = [this, wait, action] {
            if (++m_waits == wait)
                action();
        };
    }

    recording::ScriptBench bench;
    recording::ProbeHandler probe;
    recording::ProbeHandler os;

private:
    int m_waits = 0;
};

} // namespace

TEST_F(ReentrantRun, RunsToItsEndBeforeTheFirstGoesOn)
{
    insideWait(2, [&] { bench.run({u"file.x "_s, u"file.y "_s, u"file.z "_s}); });
    bench.run({u"file.a "_s, u"file.b "_s, u"file.c "_s});
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"x|"_s, u"y|"_s, u"z|"_s, u"b|"_s, u"z|"_s}))
        << "the line that waited is done as it was read, the rest comes from the new list";
}

TEST_F(ReentrantRun, MayClearTheRunList)
{
    insideWait(2, [&] { bench.state.runlist.clear(); });
    bench.run({u"file.a "_s, u"file.b "_s, u"file.c "_s});
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"b|"_s}));
}

TEST_F(ReentrantRun, MayShrinkTheRunList)
{
    insideWait(1, [&] { bench.run({u"file.x "_s}); });
    bench.run({u"file.a "_s, u"file.b "_s, u"file.c "_s});
    EXPECT_EQ(probe.calls, (QStringList{u"x|"_s, u"a|"_s}));
}

TEST_F(ReentrantRun, MayClearTheRunListInsideARepetition)
{
    insideWait(5, [&] { bench.run({}); });
    bench.run({u"while.start \"count\",\"9\""_s, u"file.a "_s, u"file.b "_s, u"while.end"_s, u"file.c "_s});
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"b|"_s, u"a|"_s}));
}

TEST_F(ReentrantRun, MayClearTheRunListInsideACommandsWait)
{
    insideWait(2, [&] { bench.run({u"set.a \"1\""_s}); });
    bench.run({u"mouse.click"_s, u"mouse.r_click"_s});
    EXPECT_EQ(bench.events(),
        (QStringList{u"wait 10"_s, u"mouse 2"_s, u"wait 200"_s, u"wait 10"_s, u"mouse 4"_s, u"wait 200"_s}));
}

TEST_F(ReentrantRun, SharesTheVariablesAndEmptiesThemAtItsEnd)
{
    QString seen;
    insideWait(2, [&] {
        probe.onCall = [&] { seen = bench.variable(u"a"_s); };
        bench.run({u"file.x "_s});
    });
    bench.run({u"set.a \"1\""_s, u"set.b set.a"_s});
    EXPECT_EQ(seen, u"1"_s);
    EXPECT_EQ(bench.variable(u"b"_s), u"a"_s) << "unknown by then";
}

TEST_F(ReentrantRun, ChangesTheEndThatTheFirstRunLooksAt)
{
    insideWait(1, [&] { bench.run({u"file.x "_s}); });
    bench.run({u"set.a \"1\""_s, u"set.b \"2\""_s});
    EXPECT_EQ(bench.state.runidx[1], 0);
    EXPECT_EQ(bench.state.vardict.size(), 0) << "line 0 is the end that the second run left";
}

TEST_F(ReentrantRun, ASecondLoopMovesTheBoundsOfTheFirst)
{
    insideWait(2, [&] {
        bench.run({u"file.x "_s, u"while.start \"count\",\"2\""_s, u"file.y "_s, u"while.end"_s});
        bench.state.runlist = QStringList{u"while.start \"count\",\"2\""_s, u"file.a "_s, u"while.end"_s};
    });
    bench.run({u"while.start \"count\",\"2\""_s, u"file.a "_s, u"while.end"_s});
    EXPECT_EQ(probe.calls, (QStringList{u"x|"_s, u"y|"_s, u"y|"_s, u"a|"_s}))
        << "the first loop's body now begins beyond its end";
}

TEST_F(ReentrantRun, MaySuspendWithoutSuspendingTheFirst)
{
    insideWait(1, [&] { bench.run({u"input.text \"who\""_s, u"file.x "_s, u"file.y "_s}); });
    bench.run({u"file.a "_s, u"file.b "_s, u"file.c "_s});
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"x|"_s, u"y|"_s}));
    EXPECT_EQ(bench.state.runidx[0], 1);
}

TEST_F(ReentrantRun, ThatRaisesLeavesTheFirstAloneWhenItsStarterCatches)
{
    int raised = 0;
    insideWait(1, [&] {
        raised = raisedBy([&] { bench.run({u"text.replace \"a\",\"b\""_s, u"file.x "_s}); });
    });
    bench.run({u"file.a "_s, u"file.b "_s});
    EXPECT_EQ(raised, RunTimeError::SubscriptOutOfRange);
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"x|"_s}));
}

TEST_F(ReentrantRun, ThatRaisesThroughTheWaitLeavesTheFirstToo)
{
    insideWait(2, [&] { bench.run({u""_s, u""_s, u""_s, u"text.replace \"a\",\"b\""_s}); });
    try {
        bench.run({u"file.a "_s, u"file.b "_s});
        FAIL() << "no error";
    } catch (const RunTimeError &error) {
        EXPECT_EQ(error.line(), 3) << "the line that raised it";
    }
    EXPECT_EQ(probe.calls, QStringList{u"a|"_s});
}

TEST_F(ReentrantRun, ThatEndsTheProcessLeavesTheFirstAtOnce)
{
    insideWait(2, [&] {
        bench.state.runctx[1] = u"jb"_s;
        bench.run({u"file.x "_s});
    });
    bench.run({u"file.a "_s, u"file.b "_s, u"file.c "_s});
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"x|"_s}));
    EXPECT_EQ(bench.events().count(u"end process"_s), 1);
}

TEST_F(ReentrantRun, ThatEndsTheProcessInACommandsWaitLeavesTheFirstAfterTheCommand)
{
    insideWait(2, [&] {
        bench.state.runctx[1] = u"jb"_s;
        bench.run({u"file.x "_s});
    });
    bench.run({u"mouse.click"_s, u"file.b "_s});
    EXPECT_EQ(probe.calls, QStringList{u"x|"_s});
    EXPECT_EQ(bench.events().count(u"end process"_s), 1);
}

TEST_F(ReentrantRun, MayBeStartedInsideEachOther)
{
    int depth = 0;
    bench.waiter.onWait = [&] {
        if (++depth < 200)
            bench.run({u"while.start \"count\",\"2\""_s, u"file.a "_s, u"while.end"_s});
    };
    bench.run({u"while.start \"count\",\"2\""_s, u"file.a "_s, u"while.end"_s});
    EXPECT_GT(probe.calls.size(), 200);
}

TEST_F(ReentrantRun, MayClickInsideAClick)
{
    insideWait(2, [&] { bench.run({u"mouse.click"_s}); });
    bench.run({u"mouse.click"_s});
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 2);
    EXPECT_EQ(bench.events().count(u"mouse 4"_s), 2);
}

TEST_F(ReentrantRun, MayReplaceTheTextsThatAHandlerReads)
{
    // The line's texts live in the loop's own memory, not in the list.
    insideWait(2, [&] {
        for (int repetition = 0; repetition < 100; ++repetition)
            bench.state.runlist = QStringList(100, QString(1000, u'x'));
    });
    bench.run({u"mouse.while_click \"3\",\"click\",\"7\""_s});
    EXPECT_EQ(bench.events().count(u"wait 7"_s), 3);
}
