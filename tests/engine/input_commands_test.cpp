#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;
using plum::recording::ScriptBench;

TEST(InputEnter, StoresWhatWasTypedAfterTheKeyword)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann, Bob"_s;
    bench.runKeepingVariables({u"input.enter \"who\""_s, u"me.enter \"also\""_s});
    EXPECT_EQ(bench.variable(u"who"_s), u"Ann, Bob"_s);
    EXPECT_EQ(bench.variable(u"also"_s), u"Ann, Bob"_s);
}

TEST(InputEnter, TakesOnlyItsFirstField)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann"_s;
    bench.runKeepingVariables({u"input.enter \"who\",\"else\""_s});
    EXPECT_EQ(bench.variable(u"who"_s), u"Ann"_s);
    EXPECT_EQ(bench.state.vardict.size(), 1);
}

TEST(InputEnter, OfAKeywordAloneIsEmpty)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail"_s;
    bench.runKeepingVariables({u"input.enter \"who\""_s});
    EXPECT_TRUE(bench.state.vardict.contains(u"who"_s));
    EXPECT_EQ(bench.variable(u"who"_s), QString());
}

TEST(InputEnter, IsAnyCommandThatBeginsSo)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann"_s;
    bench.runKeepingVariables(
        {u"input.entered \"a\""_s, u"me.enterprise_2 \"b\""_s, u"input.Enter \"c\""_s, u"me.ente \"d\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"Ann"_s);
    EXPECT_EQ(bench.variable(u"b"_s), u"Ann"_s);
    EXPECT_FALSE(bench.state.vardict.contains(u"c"_s));
    EXPECT_FALSE(bench.state.vardict.contains(u"d"_s));
}

TEST(InputEnterPiece, ShowsThePositionAndThenStoresThePiece)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann,Bob"_s;
    EXPECT_EQ(bench.eventsOf(u"input.enter_2 \"_,_\",\"who\""_s), QStringList{u"message |6|0"_s});
    EXPECT_EQ(bench.variable(u"who"_s), u"Bob"_s);
}

TEST(InputEnterPiece, WorksForMeToo)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann;Bob"_s;
    EXPECT_EQ(bench.eventsOf(u"me.enter_1 \";\",\"who\""_s), QStringList{u"message |6|0"_s});
    EXPECT_EQ(bench.variable(u"who"_s), u"Ann"_s);
}

TEST(InputEnterPiece, TakesTheNumberAfterTheLastUnderscore)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann;Bob"_s;
    EXPECT_EQ(bench.eventsOf(u"input.enter_10_2 \";\",\"who\""_s), QStringList{u"message |9|0"_s});
    EXPECT_EQ(bench.variable(u"who"_s), u"Bob"_s);
}

TEST(InputEnterPiece, WithoutTheSeparatorIsAllThatWasTyped)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann,Bob"_s;
    bench.runKeepingVariables({u"input.enter_1 \";\",\"a\""_s, u"input.enter_1 \"\",\"b\""_s});
    EXPECT_EQ(bench.variable(u"a"_s), u"Ann,Bob"_s);
    EXPECT_EQ(bench.variable(u"b"_s), u"Ann,Bob"_s);
}

TEST(InputEnterPiece, BeyondThePiecesIsASubscriptErrorAfterTheMessage)
{
    for (const QString &command : {u"enter_3"_s, u"enter_0"_s, u"enter_-1"_s}) {
        ScriptBench bench;
        bench.launcher.keywordBox = u"mail Ann,Bob"_s;
        EXPECT_EQ(raisedBy([&] { bench.run({u"input."_s + command + u" \"_,_\",\"who\""_s}); }),
            RunTimeError::SubscriptOutOfRange);
        EXPECT_EQ(bench.events().last(), u"message |6|0"_s);
    }
}

TEST(InputEnterPiece, NothingTypedHasNoPieces)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail"_s;
    EXPECT_EQ(
        raisedBy([&] { bench.run({u"input.enter_1 \";\",\"who\""_s}); }), RunTimeError::SubscriptOutOfRange);
}

TEST(InputEnterPiece, WithoutANumberIsATypeMismatchAfterTheMessage)
{
    for (const QString &command : {u"enter_"_s, u"enter_x"_s}) {
        ScriptBench bench;
        bench.launcher.keywordBox = u"mail Ann"_s;
        EXPECT_EQ(raisedBy([&] { bench.run({u"input."_s + command + u" \";\",\"who\""_s}); }),
            RunTimeError::TypeMismatch);
        EXPECT_EQ(bench.events().last(), u"message |6|0"_s);
    }
}

TEST(InputEnterPiece, TheSmallestNumberOverflows)
{
    ScriptBench bench;
    bench.launcher.keywordBox = u"mail Ann"_s;
    EXPECT_EQ(
        raisedBy([&] { bench.run({u"input.enter_-2147483648 \";\",\"who\""_s}); }), RunTimeError::Overflow);
}

TEST(MeHide, HidesTheLauncher)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"me.hide"_s), QStringList{u"hide launcher"_s});
    EXPECT_EQ(bench.eventsOf(u"me.Hide"_s), QStringList());
}
