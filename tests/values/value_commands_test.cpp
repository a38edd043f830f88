#include "support/second_edition.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::failureOf;
using plum::recording::ScriptBench;

namespace {

class ValueCommands : public testing::Test
{
protected:
    ScriptBench bench;
};

} // namespace

TEST_F(ValueCommands, CalcStoresANumber)
{
    bench.state.vardict.SetVar(u"n"_s, u"20"_s);
    EXPECT_FALSE(failureOf(bench, u"calc.set"_s, {u"n"_s, u"(set.n + 1) * 2"_s}));
    EXPECT_EQ(bench.variable(u"n"_s), u"42");
    bench.launcher.keywordBox = u"calc 5"_s;
    EXPECT_FALSE(failureOf(bench, u"calc.set"_s, {u"m"_s, u"me.enter_input / 2"_s}));
    EXPECT_EQ(bench.variable(u"m"_s), u"2.5");
}

TEST_F(ValueCommands, CalcFailsWithTheColumnAndStoresNothing)
{
    EXPECT_EQ(failureOf(bench, u"calc.set"_s, {u"n"_s, u"1 + set.gone"_s}),
        u"set.gone was never set, at character 5 of the expression"_s);
    EXPECT_FALSE(bench.state.vardict.contains(u"n"_s));
    EXPECT_TRUE(failureOf(bench, u"calc.set"_s, {u"n"_s, u"file.x + 1"_s}));
}

TEST_F(ValueCommands, JsonStoresWhatThePathLeadsTo)
{
    EXPECT_FALSE(failureOf(bench, u"json.get"_s, {u"{\"a\":{\"b\":[5]}}"_s, u"a.b[0]"_s, u"v"_s}));
    EXPECT_EQ(bench.variable(u"v"_s), u"5");
    EXPECT_EQ(failureOf(bench, u"json.get"_s, {u"{}"_s, u"a"_s, u"w"_s}), u"there is no \"a\" (path a)"_s);
    EXPECT_FALSE(bench.state.vardict.contains(u"w"_s));
}

TEST_F(ValueCommands, MeanNothingToTheFirstEdition)
{
    EXPECT_EQ(bench.eventsOf(u"calc.set \"n\",\"1\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"json.get \"1\",\"\",\"n\""_s), QStringList());
    EXPECT_FALSE(bench.state.vardict.contains(u"n"_s));
}
