#include "support/probe_handler.h"
#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

// A script of the namespace "file" that shows what its handler is given.
class RunLoopTest : public testing::Test
{
protected:
    RunLoopTest() { bench.loop.addNamespace(u"file"_s, probe); }

    QStringList callsOf(const QStringList &lines)
    {
        bench.run(lines);
        return probe.calls;
    }

    recording::ScriptBench bench;
    recording::ProbeHandler probe;
};

using RunLines = RunLoopTest;
using ScriptLine = RunLoopTest;
using Suspension = RunLoopTest;
using EndOfRun = RunLoopTest;

} // namespace

TEST_F(RunLines, PausesTenMillisecondsBeforeEachLine)
{
    bench.run({u"// a comment"_s, u""_s, u"set.a \"1\""_s, u"set.b \"2\""_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"wait 10"_s}));
}

TEST_F(RunLines, PausesBeforeUnknownNamespacesToo)
{
    bench.run({u"nothing.at_all x"_s, u"   "_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"wait 10"_s}));
}

TEST_F(RunLines, PausesBeforeTheLineActs)
{
    bench.run({u"mouse.l_down"_s, u"mouse.l_up"_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"mouse 2"_s, u"wait 10"_s, u"mouse 4"_s}));
}

TEST_F(RunLines, RunsFromTheStartToTheEndLineIncluded)
{
    bench.state.runlist = QStringList{u"file.0 "_s, u"file.1 "_s, u"file.2 "_s, u"file.3 "_s};
    qint16 start = 1;
    qint16 end = 2;
    bench.loop.RunLines(start, end);
    EXPECT_EQ(probe.calls, (QStringList{u"1|"_s, u"2|"_s}));
}

TEST_F(RunLines, AStartBeyondTheEndRunsNothing)
{
    bench.state.runlist = QStringList{u"file.0 "_s, u"file.1 "_s, u"file.2 "_s};
    bench.state.vardict.SetVar(u"a"_s, u"1"_s);
    qint16 start = 2;
    qint16 end = 0;
    bench.loop.RunLines(start, end);
    EXPECT_EQ(probe.calls, QStringList());
    EXPECT_EQ(bench.variable(u"a"_s), u"1"_s) << "only a range that is empty by one line empties the store";
}

TEST_F(RunLines, LinesThatAreMissingAreSkipped)
{
    bench.state.runlist = QStringList{u"file.0 "_s};
    qint16 start = -3;
    qint16 end = 9;
    bench.loop.RunLines(start, end);
    EXPECT_EQ(probe.calls, QStringList{u"0|"_s});
}

TEST_F(RunLines, NamespacesAreMatchedExactly)
{
    bench.loop.addNamespace(u"os"_s, probe);
    EXPECT_EQ(callsOf({u"File.a x"_s, u"FILE.b x"_s, u" file.c x"_s, u"files.d x"_s, u"file.e x"_s}),
        QStringList{u"e|x"_s});
}

TEST_F(RunLines, AnUnknownCommandDoesNothing)
{
    bench.run({u"mouse.nothing \"1\""_s, u"Mouse.click"_s, u"mouse.Click"_s, u"window.nothing"_s});
    EXPECT_EQ(bench.events(), QStringList(4, u"wait 10"_s));
}

TEST_F(ScriptLine, OnlyTwoSlashesInTheFirstColumnMakeAComment)
{
    bench.run({u"//x"_s, u"//"_s, u"  // x"_s, u"/ x"_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"wait 10"_s}));
}

TEST_F(ScriptLine, ArgumentsAreAllAfterTheFirstBlank)
{
    EXPECT_EQ(callsOf({u"file.a x y"_s, u"file.b  x "_s, u"file.c "_s, u"file.d\tx y"_s}),
        (QStringList{u"a|x y"_s, u"b| x "_s, u"c|"_s, u"d\tx|y"_s}));
}

TEST_F(ScriptLine, WithoutABlankTheArgumentsOfTheLineBeforeStay)
{
    EXPECT_EQ(callsOf({u"file.a 1,2"_s, u"// file.x 3"_s, u""_s, u"nothing.b 4"_s, u"file.c"_s}),
        (QStringList{u"a|1,2"_s, u"c|4"_s}));
}

TEST_F(ScriptLine, ThatStartsWithABlankKeepsTheArgumentsToo)
{
    EXPECT_EQ(callsOf({u"file.a 1"_s, u" file.b 2"_s, u"file.c"_s}), (QStringList{u"a|1"_s, u"c|1"_s}));
}

TEST_F(ScriptLine, WithoutADotTheCommandOfTheLineBeforeStays)
{
    EXPECT_EQ(callsOf({u"file.a 1"_s, u"file 2"_s, u"file"_s}), (QStringList{u"a|1"_s, u"a|2"_s, u"a|2"_s}));
    bench.platform.log.clear();
    bench.run({u"keyboard.key_down \"a\""_s, u"keyboard \"b\""_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"key 65 0"_s, u"wait 10"_s, u"key 66 0"_s}));
}

TEST_F(ScriptLine, TheCommandOfAnIgnoredLineIsKept)
{
    EXPECT_EQ(callsOf({u".x 1"_s, u"file 2"_s}), QStringList{u"x|2"_s});
}

TEST_F(ScriptLine, AnEmptyNamespaceIsIgnored)
{
    EXPECT_EQ(callsOf({u".a 1"_s, u". 2"_s}), QStringList());
}

TEST_F(ScriptLine, PiecesAfterTheSecondAreIgnored)
{
    EXPECT_EQ(callsOf({u"file.a.b.c 1"_s, u"file..b 2"_s}), (QStringList{u"a|1"_s, u"|2"_s}));
}

TEST_F(ScriptLine, CommandAndArgumentsDoNotOutliveTheCall)
{
    bench.run({u"file.a 1"_s});
    probe.calls.clear();
    EXPECT_EQ(callsOf({u"file"_s}), QStringList{u"|"_s});
}

TEST_F(ScriptLine, AnEscapedCommaReachesTheHandlerAsItsPlaceholder)
{
    EXPECT_EQ(callsOf({u"file.x a_,_b"_s}), QStringList{u"x|atarnwick_dou_b"_s});
    bench.runKeepingVariables({u"set.a \"1_,_2_,_3\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"1,2,3"_s);
}

TEST_F(ScriptLine, AnEscapeIsLookedForAnewInArgumentsThatStayed)
{
    // The placeholder of the first escape and the comma behind it are an escape for the next line.
    EXPECT_EQ(callsOf({u"file.a _,_,_"_s, u"file.b"_s}),
        (QStringList{u"a|tarnwick_dou_,_"_s, u"b|tarnwick_doutarnwick_dou_"_s}));
}

TEST_F(ScriptLine, SetTakesItsArgumentsWhole)
{
    bench.loop.addNamespace(u"set"_s, probe);
    EXPECT_EQ(callsOf({u"set.a 1,2"_s}), QStringList{u"a|1,2"_s});
}

TEST_F(ScriptLine, NulBytesAndHalvesOfSurrogatesAreCharacters)
{
    const QString odd = QString(1, QChar(0)) + QChar(0xd800) + u"x"_s;
    EXPECT_EQ(callsOf({u"file.a "_s + odd, odd, odd + u".b "_s + odd}), QStringList{u"a|"_s + odd});
}

TEST_F(ScriptLine, TwentyMegabytesLong)
{
    bench.runKeepingVariables({u"set.a \""_s + QString(20'000'000, u'x') + u'"'});
    EXPECT_EQ(bench.variable(u"a"_s).size(), 20'000'000);
}

TEST_F(RunLines, InputLetsOnlyEnterThrough)
{
    bench.launcher.keywordBox = u"mail Ann"_s;
    bench.runKeepingVariables({u"input.hide"_s, u"input.enter \"a\""_s, u"input.nothing \"b\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"Ann"_s);
    EXPECT_FALSE(bench.events().contains(u"hide launcher"_s));
}

TEST_F(RunLines, MeLetsEveryCommandThrough)
{
    bench.launcher.keywordBox = u"mail Ann"_s;
    bench.runKeepingVariables({u"me.hide"_s, u"me.enter \"a\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"Ann"_s);
    EXPECT_TRUE(bench.events().contains(u"hide launcher"_s));
}

TEST_F(RunLines, AnErrorLeavesTheRunWithTheLinesNumber)
{
    try {
        bench.run({u"set.a \"1\""_s, u""_s, u"text.replace \"a\",\"b\""_s, u"mouse.click"_s});
        FAIL() << "no error";
    } catch (const RunTimeError &error) {
        EXPECT_EQ(error.number(), RunTimeError::SubscriptOutOfRange);
        EXPECT_EQ(error.description(), u"Subscript out of range: there is no piece 3"_s);
        EXPECT_EQ(error.line(), 2);
    }
    EXPECT_FALSE(bench.events().contains(u"mouse 2"_s));
    EXPECT_EQ(bench.variable(u"a"_s), u"1"_s) << "the run did not end";
}

TEST_F(Suspension, ATipLeavesTheLoopAndRemembersTheNextLine)
{
    recording::ProbeHandler os;
    os.next = Next::Suspend;
    bench.loop.addNamespace(u"os"_s, os);
    bench.run({u"set.a \"1\""_s, u"os.tips \"hello\""_s, u"file.b "_s});
    EXPECT_EQ(os.calls, QStringList{u"tips|\"hello\""_s});
    EXPECT_EQ(probe.calls, QStringList());
    EXPECT_EQ(bench.state.runidx[0], 2);
    EXPECT_EQ(bench.variable(u"a"_s), u"1"_s);
}

TEST_F(Suspension, OtherCommandsOfOsGoOn)
{
    bench.run({u"os.tip x"_s, u"os.Tips x"_s, u"file.b "_s});
    EXPECT_EQ(probe.calls, QStringList{u"b|"_s});
}

TEST_F(Suspension, AlsoComesWithACommandKeptFromTheLineBefore)
{
    bench.run({u"nothing.tips x"_s, u"os \"hello\""_s, u"file.b "_s});
    EXPECT_EQ(bench.events().last(), u"tip hello"_s);
    EXPECT_EQ(bench.state.runidx[0], 2);
    bench.run({u"nothing.text x"_s, u"input \"who\",\"Your name?\""_s, u"file.b "_s});
    EXPECT_EQ(bench.events().last(), u"input Your name?|who"_s);
    EXPECT_EQ(probe.calls, QStringList());
}

TEST_F(Suspension, OnTheLastLineKeepsTheVariables)
{
    recording::ProbeHandler os;
    os.next = Next::Suspend;
    bench.loop.addNamespace(u"os"_s, os);
    bench.state.runctx[1] = u"jb"_s;
    bench.run({u"set.a \"1\""_s, u"os.tips \"hello\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"1"_s);
    EXPECT_FALSE(bench.events().contains(u"end process"_s));
}

TEST_F(Suspension, InputTextShowsThePromptAndRemembersTheVariable)
{
    bench.run({u"input.text \"who\",\"Your name?\""_s, u"file.b "_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"input Your name?|who"_s}));
    EXPECT_EQ(bench.state.runidx[0], 1);
    EXPECT_EQ(probe.calls, QStringList());
}

TEST_F(Suspension, InputTextTakesUnknownVariablesAsTheirNames)
{
    bench.run({u"input.text set.who,set.Name?"_s});
    EXPECT_EQ(bench.events().last(), u"input Name?|who"_s);
}

TEST_F(Suspension, OtherCommandsAndNamespacesThatLookAlikeGoOn)
{
    bench.run({u"me.text_inputs \"x\""_s, u"me.text \"x\""_s, u"input.text_input \"x\""_s,
        u"mouse.tips \"x\""_s, u"file.tips \"x\""_s, u"file.b "_s});
    EXPECT_EQ(probe.calls, (QStringList{u"tips|\"x\""_s, u"b|"_s}));
    EXPECT_EQ(bench.events(), QStringList(6, u"wait 10"_s));
}

TEST_F(Suspension, InputTextWithOnePieceShowsItTwice)
{
    bench.run({u"input.text \"Name?\""_s});
    EXPECT_EQ(bench.events().last(), u"input Name?|Name?"_s);
}

TEST_F(Suspension, MeTextInputIsTheSame)
{
    bench.run({u"me.text_input \"who\",\"Your name?\""_s, u"file.b "_s});
    EXPECT_EQ(bench.events().last(), u"input Your name?|who"_s);
    EXPECT_EQ(bench.state.runidx[0], 1);
    EXPECT_EQ(probe.calls, QStringList());
}

TEST_F(EndOfRun, EmptiesTheVariablesAfterTheLastLine)
{
    bench.run({u"set.a \"1\""_s, u"set.b \"2\""_s});
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(EndOfRun, AlsoComesWhenTheLastLineIsSkipped)
{
    bench.run({u"set.a \"1\""_s, u"// the end"_s});
    EXPECT_EQ(bench.state.vardict.size(), 0);
    bench.run({u"set.a \"1\""_s, u""_s});
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(EndOfRun, VariablesLiveFromLineToLine)
{
    bench.runKeepingVariables({u"set.a \"1\""_s, u"set.b set.a"_s});
    EXPECT_EQ(bench.variable(u"b"_s), u"1"_s);
}

TEST_F(EndOfRun, EndsTheProcessOfACommandLineRunOnce)
{
    bench.state.runctx[1] = u"jb"_s;
    bench.run({u"set.a \"1\""_s, u"mouse.l_down"_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"wait 10"_s, u"mouse 2"_s, u"end process"_s}));
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(EndOfRun, OfTheLauncherLeavesTheProcess)
{
    bench.run({u"mouse.l_down"_s});
    EXPECT_FALSE(bench.events().contains(u"end process"_s));
}

TEST_F(EndOfRun, AnEmptyListEmptiesTheVariablesAndRunsNothing)
{
    bench.state.runctx[1] = u"jb"_s;
    bench.state.vardict.SetVar(u"a"_s, u"1"_s);
    bench.run({});
    EXPECT_EQ(bench.state.vardict.size(), 0);
    EXPECT_EQ(bench.events(), QStringList());
}

TEST_F(EndOfRun, FollowsAnEndThatAHandlerChanged)
{
    probe.onCall = [this] {
        bench.state.vardict.SetVar(u"a"_s, u"1"_s);
        bench.state.runidx[1] = 1;
    };
    bench.run({u"file.a "_s, u""_s, u"set.b \"2\""_s, u"set.c \"3\""_s});
    EXPECT_FALSE(bench.state.vardict.contains(u"a"_s)) << "emptied after line 1";
    EXPECT_EQ(bench.variable(u"b"_s), u"2"_s) << "the lines go on to the end of the call";
    EXPECT_EQ(bench.variable(u"c"_s), u"3"_s);
}

TEST_F(EndOfRun, AtAnEarlierEndLeavesACommandLineRun)
{
    bench.state.runctx[1] = u"jb"_s;
    probe.onCall = [this] { bench.state.runidx[1] = 1; };
    bench.run({u"file.a "_s, u""_s, u"mouse.l_down"_s});
    EXPECT_EQ(bench.events(), (QStringList{u"wait 10"_s, u"end process"_s}));
}
