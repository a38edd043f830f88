#include "engine/editions/run_observer.h"

#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "platform/stop_signal.h"
#include "support/run_witness.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class RunObserverTest : public testing::Test
{
protected:
    RunObserverTest() { bench.state.observer = &witness; }

    void run2(const QByteArray &lines)
    {
        const QString path = files.write(u"test.wf"_s, "//edition:2\n" + lines);
        ASSERT_TRUE(bench.system.starts().prepareFile(path));
        try {
            bench.system.starts().runAll();
        } catch (const ScriptError &failure) {
            error = failure.mistakes().front().reason;
        }
    }

    recording::ScriptBench bench;
    test::RunWitness witness;
    test::TemporaryFiles files;
    QString error;
};

} // namespace

TEST_F(RunObserverTest, HearsOfFieldsResultsAndEndsOfLines)
{
    bench.run({u"set.a \"1\""_s, u"// nothing"_s, u"mouse.move \"3:4\""_s});
    EXPECT_EQ(witness.heard,
        (QStringList{u"1 set.a \"1\""_s, u"field 0 1"_s, u"set a 1"_s, u"done"_s, u"3 mouse.move \"3:4\""_s,
            u"field 0 3:4"_s, u"done"_s}));
}

TEST_F(RunObserverTest, HearsOfRepeatedLinesInsideTheOneThatRepeatsThem)
{
    bench.run({u"while.start \"count\",\"2\""_s, u"set.a \"1\""_s, u"while.end "_s, u"// last"_s});
    EXPECT_EQ(witness.heard,
        (QStringList{u"1 while.start \"count\",\"2\""_s, u"done"_s, u"2 set.a \"1\""_s, u"field 0 1"_s,
            u"set a 1"_s, u"done"_s, u"3 while.end"_s, u"2 set.a \"1\""_s, u"field 0 1"_s, u"set a 1"_s,
            u"done"_s, u"done"_s}));
}

TEST_F(RunObserverTest, HearsWhyALineFailed)
{
    EXPECT_THROW(bench.run({u"keyboard.key \"a\""_s, u"mouse.move \"x\""_s, u"set.a \"1\""_s}), RunTimeError);
    ASSERT_FALSE(witness.heard.isEmpty());
    EXPECT_TRUE(witness.heard.last().startsWith(u"failed: ")) << qPrintable(witness.heard.last());
}

TEST_F(RunObserverTest, HearsThatALineWasStopped)
{
    bench.waiter.onWait = [] { throw RunStopped(); };
    EXPECT_THROW(bench.run({u"set.a \"1\""_s}), RunStopped);
    EXPECT_EQ(witness.heard, (QStringList{u"1 set.a \"1\""_s, u"stopped"_s}));
}

TEST_F(RunObserverTest, HearsOfAnAnswerBeforeItsVariable)
{
    bench.run({u"input.text \"a\",\"Who?\""_s, u"set.b set.a"_s, u"//"_s});
    bench.state.takeAnswer(u"a"_s, u"Ann"_s);
    bench.system.starts().resume();
    EXPECT_EQ(witness.heard,
        (QStringList{u"1 input.text \"a\",\"Who?\""_s, u"field 1 Who?"_s, u"field 0 a"_s, u"rests"_s,
            u"answer Ann"_s, u"set a Ann"_s, u"2 set.b set.a"_s, u"field 0 Ann"_s, u"set b Ann"_s,
            u"done"_s}));
}

TEST_F(RunObserverTest, HearsOfTheLinesOfEdition2)
{
    run2("repeat.times 2,i\n    mouse.move $\"{i}:4\"\nrepeat.end\nwhen.start set.i,is,3\n    set.a "
         "set.i\nwhen.end\n");
    EXPECT_EQ(error, u""_s);
    EXPECT_EQ(witness.heard,
        (QStringList{u"2 repeat.times 2,i"_s, u"field 0 2"_s, u"done"_s, u"2 repeat.times 2,i"_s,
            u"set i 1"_s, u"done"_s, u"3 mouse.move $\"{i}:4\""_s, u"field 0 1:4"_s, u"done"_s,
            u"2 repeat.times 2,i"_s, u"set i 2"_s, u"done"_s, u"3 mouse.move $\"{i}:4\""_s, u"field 0 2:4"_s,
            u"done"_s, u"2 repeat.times 2,i"_s, u"done"_s, u"5 when.start set.i,is,3"_s, u"field 0 2"_s,
            u"field 1 3"_s, u"done"_s}));
    EXPECT_EQ(witness.scripts, QStringList(u"test.wf"_s));
}

TEST_F(RunObserverTest, HearsOfFailuresThatEdition2Catches)
{
    run2("try.start\n    mouse.move set.nowhere\ntry.failed reason\n    set.a set.reason\ntry.end\n");
    EXPECT_EQ(witness.heard,
        (QStringList{u"3 mouse.move set.nowhere"_s, u"failed: nowhere was never set"_s,
            u"set reason nowhere was never set"_s, u"5 set.a set.reason"_s,
            u"field 0 nowhere was never set"_s, u"set a nowhere was never set"_s, u"done"_s}));
}

// A loop that only computes is counted; the line that ends it is told, with what it read.
TEST_F(RunObserverTest, IsNotToldOfEachLineThatOnlyComputes)
{
    constexpr int passes = 20'000;
    run2("set.a 1\nrepeat.times " + QByteArray::number(passes)
        + "\n    set.b set.a\nrepeat.end\nmouse.move 1:2\nset.c set.nowhere\n");
    EXPECT_NE(error, u""_s);
    EXPECT_GT(witness.passed, passes / 2);
    EXPECT_TRUE(witness.heard.contains(u"6 mouse.move 1:2"_s))
        << qPrintable(witness.heard.last(20).join(u'\n'));
    EXPECT_EQ(witness.heard.last(), u"failed: "_s + error);
}

TEST_F(RunObserverTest, HearsOfEachLineOnceOrAsPassed)
{
    constexpr int passes = 20'000;
    run2("set.a 1\nrepeat.times " + QByteArray::number(passes)
        + "\n    set.b set.a\nrepeat.end\n"
          "set.c set.nowhere\n");
    const auto told
        = std::ranges::count_if(witness.heard, [](const QString &heard) { return heard.front().isDigit(); });
    // Before each pass, and behind the last one, the repetition's line is one, too.
    EXPECT_EQ(told + witness.passed, 1 + 1 + (passes + 1) + passes + 1);
}

// Nothing that a secret goes through may be missed.
TEST_F(RunObserverTest, IsToldOfEachLineWhereItWantsThat)
{
    witness.wantsAll = true;
    run2("repeat.times 5000\n    set.b 1\nrepeat.end\n");
    EXPECT_EQ(error, u""_s);
    EXPECT_EQ(witness.passed, 0);
}

TEST_F(RunObserverTest, ChangesNothingOfARun)
{
    const QByteArray lines = "set.a 1\nrepeat.times 300,i\n    set.a $\"{a}{i}\"\nrepeat.end\n"
                             "keyboard.type set.a\nmouse.move 1:2\n";
    run2(lines);
    const QStringList observed = bench.events();
    bench.platform.log.clear();
    bench.state.observer = nullptr;
    run2(lines);
    EXPECT_EQ(bench.events(), observed);
    EXPECT_EQ(error, u""_s);
}
