#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;
using plum::recording::ScriptBench;

TEST(SetCommand, StoresALiteralWithItsComma)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"set.a \"x,y\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"x,y"_s);
}

TEST(SetCommand, StoresNothingForAnUnquotedTextWithoutADot)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"set.a \"1\""_s, u"set.a x,y"_s});
    EXPECT_TRUE(bench.state.vardict.contains(u"a"_s));
    EXPECT_EQ(bench.variable(u"a"_s), QString());
}

TEST(SetCommand, CopiesAVariable)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"set.a \"1\""_s, u"set.b set.a"_s, u"set.c set.missing"_s});
    EXPECT_EQ(bench.variable(u"b"_s), u"1"_s);
    EXPECT_EQ(bench.variable(u"c"_s), u"missing"_s);
}

TEST(SetCommand, EvaluatesItsValueOnce)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"set.a \"set.b\""_s, u"set.c set.a"_s});
    EXPECT_EQ(bench.variable(u"c"_s), u"set.b"_s);
}

TEST(SetCommand, KeepsTheCaseOfTheName)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"set.Name \"1\""_s, u"set.name \"2\""_s, u"set. \"nameless\""_s});
    EXPECT_EQ(bench.variable(u"Name"_s), u"1"_s);
    EXPECT_EQ(bench.variable(u"name"_s), u"2"_s);
    EXPECT_EQ(bench.variable(QString()), u"nameless"_s);
}

TEST(SetCommand, TakesATemplate)
{
    ScriptBench bench;
    bench.runKeepingVariables(
        {u"set.name \"Ann\""_s, u"set.age \"7\""_s, u"set.a Hello +?+, you are +?++(set.name+set.age)"_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"Hello Ann, you are 7"_s);
}

TEST(TextReplace, IgnoringCaseReplacesBothLetters)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.replace \"r\",\"Hello\",\"L\",\"_\",\"\",\"\",\"no\""_s});
    EXPECT_EQ(bench.variable(u"r"_s), u"He__o"_s);
}

TEST(TextReplace, ExactComparisonIsTheDefault)
{
    for (const QString &match : {u"true"_s, QString()}) {
        ScriptBench bench;
        bench.runKeepingVariables(
            {u"text.replace \"r\",\"Hello\",\"L\",\"_\",\"\",\"\",\"%1\""_s.arg(match)});
        EXPECT_EQ(bench.variable(u"r"_s), u"Hello"_s);
    }
}

TEST(TextReplace, AnyOtherComparisonStoresNothing)
{
    for (const QString &match : {u"yes"_s, u"True"_s, u"NO"_s}) {
        ScriptBench bench;
        bench.runKeepingVariables({u"set.r \"before\""_s,
            u"text.replace \"r\",\"Hello\",\"l\",\"_\",\"\",\"\",\"%1\""_s.arg(match)});
        EXPECT_TRUE(bench.state.vardict.contains(u"r"_s));
        EXPECT_EQ(bench.variable(u"r"_s), QString());
    }
}

TEST(TextReplace, DropsWhatStandsBeforeTheStart)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.replace \"r\",\"abcabc\",\"a\",\"x\",\"\",\"3\",\"\""_s});
    EXPECT_EQ(bench.variable(u"r"_s), u"cxbc"_s);
}

TEST(TextReplace, ReplacesAtMostTheCount)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.replace \"r\",\"a-b-c\",\"-\",\"+\",\"1\",\"\",\"\""_s,
        u"text.replace \"all\",\"a-b-c\",\"-\",\"+\",\"\",\"\",\"\""_s,
        u"text.replace \"none\",\"a-b-c\",\"-\",\"+\",\"0\",\"\",\"\""_s});
    EXPECT_EQ(bench.variable(u"r"_s), u"a+b-c"_s);
    EXPECT_EQ(bench.variable(u"all"_s), u"a+b+c"_s);
    EXPECT_EQ(bench.variable(u"none"_s), u"a-b-c"_s);
}

TEST(TextReplace, LowerCasesItsCommand)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.Replace \"a\",\"x\",\"x\",\"y\",\"\",\"\",\"\""_s,
        u"text.REPLACE \"b\",\"x\",\"x\",\"y\",\"\",\"\",\"\""_s, u"text.erase \"c\",\"x\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"y"_s);
    EXPECT_EQ(bench.variable(u"b"_s), u"y"_s);
    EXPECT_EQ(bench.state.vardict.size(), 2);
}

TEST(TextReplace, FewerThanSevenPiecesAreASubscriptError)
{
    ScriptBench bench;
    EXPECT_EQ(raisedBy([&] { bench.run({u"text.replace \"r\",\"a\",\"a\",\"b\",\"\",\"\""_s}); }),
        RunTimeError::SubscriptOutOfRange);
}

TEST(TextReplace, UnknownVariablesAreTheirNamesInEveryPiece)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.replace set.r,set.aAa,set.a,set.b,set.2,set.2,set.no"_s});
    EXPECT_EQ(bench.variable(u"r"_s), u"bb"_s);
}

TEST(TextReplace, CountAndStartAreThirtyTwoBitNumbers)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.replace \"r\",\"abc\",\"b\",\"x\",\"70000\",\"1\",\"\""_s,
        u"text.replace \"beyond\",\"abc\",\"b\",\"x\",\"\",\"70000\",\"\""_s,
        u"text.replace \"rounded\",\"abab\",\"a\",\"x\",\"0.5\",\"2.5\",\"\""_s});
    EXPECT_EQ(bench.variable(u"r"_s), u"axc"_s);
    EXPECT_EQ(bench.variable(u"beyond"_s), QString());
    EXPECT_EQ(bench.variable(u"rounded"_s), u"bab"_s);
}

TEST(TextReplace, ASinglePieceIsAllSevenAndStoresNothing)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.replace \"r\""_s});
    EXPECT_TRUE(bench.state.vardict.contains(u"r"_s));
    EXPECT_EQ(bench.variable(u"r"_s), QString());
}

TEST(TextReplace, ACountOrStartThatIsNoNumberIsATypeMismatch)
{
    for (const QString &numbers : {u"\"x\",\"\""_s, u"\"\",\"x\""_s}) {
        ScriptBench bench;
        EXPECT_EQ(
            raisedBy([&] { bench.run({u"text.replace \"r\",\"a\",\"a\",\"b\",%1,\"\""_s.arg(numbers)}); }),
            RunTimeError::TypeMismatch);
    }
}

TEST(TextReplace, AStartBelowOneIsAnInvalidCall)
{
    ScriptBench bench;
    EXPECT_EQ(raisedBy([&] { bench.run({u"text.replace \"r\",\"a\",\"a\",\"b\",\"\",\"0\",\"\""_s}); }),
        RunTimeError::InvalidProcedureCall);
}

TEST(TextReplace, TakesAnEscapedComma)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"text.replace \"r\",\"a_,_b\",\"_,_\",\";\",\"\",\"\",\"\""_s});
    EXPECT_EQ(bench.variable(u"r"_s), u"a;b"_s);
}

TEST(TimeSleep, WaitsForItsMilliseconds)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"time.sleep \"500\""_s), QStringList{u"wait 500"_s});
    EXPECT_EQ(bench.eventsOf(u"time.sleep \"0\""_s), QStringList{u"wait 0"_s});
    EXPECT_EQ(bench.eventsOf(u"time.sleep \"1.5\":\"x\""_s), QStringList{u"wait 1.5"_s});
    EXPECT_EQ(bench.eventsOf(u"time.Sleep \"500\""_s), QStringList());
}

TEST(TimeSleep, ATextThatIsNoNumberIsAnError)
{
    ScriptBench bench;
    EXPECT_EQ(raisedBy([&] { bench.run({u"time.sleep \"soon\""_s}); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { bench.run({u"time.sleep 500"_s}); }), RunTimeError::TypeMismatch)
        << "unquoted is empty";
}

TEST(PrintHtml, StartsTheBrowserHelper)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"print.html \"<b>a_,_b</b>\",\"title\""_s),
        QStringList{u"helper C:\\plum\\config\\module\\net\\browser\\browser.exe|<b>a,b</b>|||title|%1"_s.arg(
            static_cast<int>(ShowState::Normal))});
    EXPECT_EQ(bench.eventsOf(u"print.Html \"a\",\"b\""_s), QStringList());
}

TEST(PrintHtml, AMissingHelperGoesUnnoticed)
{
    ScriptBench bench;
    bench.platform.shell().succeeds = false;
    EXPECT_EQ(bench.eventsOf(u"print.html \"a\",\"b\""_s).size(), 1);
}

TEST(PrintHtml, WithOneArgumentGivesItTwice)
{
    ScriptBench bench;
    EXPECT_TRUE(bench.eventsOf(u"print.html \"a\""_s).first().contains(u"|a|||a|"_s));
}
