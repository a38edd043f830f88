#include "values/expression.h"

#include "support/dice.h"

#include <QHash>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

const QHash<QString, QString> variables{{u"set.n"_s, u"7"_s}, {u"set.half"_s, u" -0.5 "_s},
    {u"set.word"_s, u"plum"_s}, {u"set.empty"_s, QString()}, {u"me.enter_input"_s, u"3"_s},
    {u"set.größe"_s, u"12"_s}};

Calculation calculate(const QString &expression)
{
    return calculated(expression, [](QStringView name) -> std::optional<QString> {
        const auto found = variables.find(name.toString());
        return found == variables.end() ? std::nullopt : std::optional(*found);
    });
}

QString result(const QString &expression)
{
    const Calculation done = calculate(expression);
    return done.value ? numberText(*done.value) : u"%1: %2"_s.arg(done.column).arg(done.problem);
}

} // namespace

TEST(Expression, FollowsTheRulesOfArithmetic)
{
    EXPECT_EQ(result(u"(set.n + 1) * 2"_s), u"16");
    EXPECT_EQ(result(u"2 + 3 * 4 - 6 / 4"_s), u"12.5");
    EXPECT_EQ(result(u"10 - 4 - 3"_s), u"3");
    EXPECT_EQ(result(u"2 * -3"_s), u"-6");
    EXPECT_EQ(result(u"--2"_s), u"2");
    EXPECT_EQ(result(u" \t7 "_s), u"7");
    EXPECT_EQ(result(u".5 + 1."_s), u"1.5");
    EXPECT_EQ(result(u"set.größe/set.half"_s), u"-24");
    EXPECT_EQ(result(u"me.enter_input * 1000"_s), u"3000");
}

TEST(Expression, GivesARemainderTheSignOfTheDivisor)
{
    EXPECT_EQ(result(u"7 % 3"_s), u"1");
    EXPECT_EQ(result(u"-1 % 7"_s), u"6");
    EXPECT_EQ(result(u"1 % -7"_s), u"-6");
    EXPECT_EQ(result(u"6 % 3"_s), u"0");
    EXPECT_EQ(result(u"7.5 % 2"_s), u"1.5");
}

TEST(Expression, ComparesToOneOrZero)
{
    for (const auto &[expression, expected] :
        {std::pair(u"1 < 2"_s, u"1"_s), {u"2 <= 2"_s, u"1"_s}, {u"3 > 4"_s, u"0"_s}, {u"4 >= 4"_s, u"1"_s},
            {u"1 + 1 == 2"_s, u"1"_s}, {u"1 != 1"_s, u"0"_s}, {u"(1 < 2) + (2 < 3)"_s, u"2"_s}})
        EXPECT_EQ(result(expression), expected) << qPrintable(expression);
}

TEST(Expression, KnowsItsFunctions)
{
    EXPECT_EQ(result(u"min(3, 1, 2)"_s), u"1");
    EXPECT_EQ(result(u"max(set.n)"_s), u"7");
    EXPECT_EQ(result(u"round(2.5)"_s), u"3");
    EXPECT_EQ(result(u"round(-2.5)"_s), u"-3");
    EXPECT_EQ(result(u"round(1.005, 2)"_s), u"1.01");
    EXPECT_EQ(result(u"round(10/3, 3)"_s), u"3.333");
    EXPECT_EQ(result(u"length(set.word) + length( set.empty )"_s), u"4");
}

TEST(Expression, SaysWhatIsWrongAndWhere)
{
    EXPECT_EQ(result(u"1 + set.gone"_s), u"5: set.gone was never set");
    EXPECT_EQ(result(u"1 + n"_s), u"5: \"n\" is no reference; write set.n");
    EXPECT_EQ(result(u"set.word * 2"_s), u"1: set.word is \"plum\", which is not a number");
    EXPECT_EQ(result(u"set.empty"_s), u"1: set.empty is \"\", which is not a number");
    EXPECT_EQ(result(u"1 / (2 - 2)"_s), u"3: division by zero");
    EXPECT_EQ(result(u"1 % 0"_s), u"3: division by zero");
    EXPECT_EQ(result(u"2+"_s), u"3: a number is missing");
    EXPECT_EQ(result(QString()), u"1: a number is missing");
    EXPECT_EQ(result(u"2 3"_s), u"3: an operator is missing before \"3\"");
    EXPECT_EQ(result(u"(1"_s), u"3: a \")\" is missing");
    EXPECT_EQ(result(u"min(1 2)"_s), u"7: a \")\" is missing before \"2\"");
    EXPECT_EQ(result(u"sin(1)"_s), u"1: there is no function \"sin\"");
    EXPECT_EQ(result(u"12abc"_s), u"1: \"12abc\" is not a number");
    EXPECT_EQ(result(u"1 = 1"_s), u"3: an operator is missing before \"=\"");
    EXPECT_EQ(result(u"2 * 😀"_s), u"5: \"😀\" is no reference; write set.😀");
    EXPECT_EQ(result(u"length(7)"_s), u"8: length takes one reference, such as set.name");
    EXPECT_EQ(result(u"round(1, 99)"_s), u"10: round takes 0 to 15 digits");
}

TEST(Expression, NeitherOverflowsNorRecursesWithoutEnd)
{
    EXPECT_EQ(result(u"9"_s.repeated(400)), u"1: the result is too large");
    const QString large = u"1"_s + u"0"_s.repeated(300);
    EXPECT_EQ(result(large + u" * "_s + large), u"303: the result is too large");
    EXPECT_TRUE(calculate(u"("_s.repeated(50) + u"1"_s + u")"_s.repeated(50)).value);
    EXPECT_FALSE(calculate(u"("_s.repeated(100000)).value);
    EXPECT_FALSE(calculate(u"-"_s.repeated(100000) + u"1"_s).value);
}

TEST(NumberText, HasAtMostFifteenDigits)
{
    EXPECT_EQ(numberText(0.1 + 0.2), u"0.3");
    EXPECT_EQ(numberText(1.0 / 3), u"0.333333333333333");
    EXPECT_EQ(numberText(-0.0), u"0");
    EXPECT_EQ(numberText(100), u"100");
    EXPECT_EQ(numberText(123456.789), u"123456.789");
    EXPECT_EQ(numberText(0.000125), u"0.000125");
    EXPECT_EQ(numberText(999999999999999), u"999999999999999");
    EXPECT_EQ(numberText(1e15), u"1e+15");
    EXPECT_EQ(numberText(1e-7), u"1e-07");
}

namespace {

QString randomExpression(recording::Dice &dice, int depth)
{
    const QStringList leaves{u"1"_s, u"0"_s, u"2.5"_s, u"set.n"_s, u"set.half"_s, u"set.größe"_s,
        u"me.enter_input"_s, u"length(set.word)"_s};
    if (depth == 0 || dice.oneIn(4))
        return leaves[dice.below(int(leaves.size()))];
    const auto inner = [&] { return randomExpression(dice, depth - 1); };
    const QStringList operators{
        u"+"_s, u"-"_s, u"*"_s, u"/"_s, u"%"_s, u"<"_s, u"<="_s, u">"_s, u">="_s, u"=="_s, u"!="_s};
    switch (dice.below(6)) {
    case 0:
        return u"min(%1,%2)"_s.arg(inner(), inner());
    case 1:
        return u"max(%1,%2,%3)"_s.arg(inner(), inner(), inner());
    case 2:
        return u"round(%1,%2)"_s.arg(inner(), inner());
    default:
        return u"(%1 %2 %3)"_s.arg(inner(), operators[dice.below(int(operators.size()))], inner());
    }
}

} // namespace

TEST(Expression, IsReadWithoutAProblemWhenSomethingMakesItWork)
{
    const auto exists = [](QStringView name) { return variables.contains(name.toString()); };
    recording::Dice dice(1);
    int worked = 0;
    int problems = 0;
    for (int i = 0; i < 20'000; ++i) {
        const QString expression = randomExpression(dice, 3);
        const Calculation read = readExpression(expression, exists);
        problems += read.problem.isEmpty() ? 0 : 1;
        if (!calculate(expression).value)
            continue;
        ++worked;
        EXPECT_EQ(read.problem, QString()) << qPrintable(expression);
    }
    EXPECT_GT(worked, 5000);
    EXPECT_GT(problems, 500); // divisions by a 0 that is written
}

TEST(Expression, HasTheSameProblemReadAndWorkedOut)
{
    const auto exists = [](QStringView name) { return variables.contains(name.toString()); };
    for (const QString &expression : {u"(set.n + 1"_s, u"set.n + l"_s, u"set.n 1"_s, u"SET.n + 1"_s,
             u"1 / 0"_s, u"round(set.n, 1.5)"_s, u"lenght(set.word)"_s, u""_s, u"set.n ** 2"_s}) {
        const Calculation read = readExpression(expression, exists);
        EXPECT_FALSE(read.problem.isEmpty()) << qPrintable(expression);
        EXPECT_EQ(read.problem, calculate(expression).problem);
        EXPECT_EQ(read.column, calculate(expression).column);
    }
}
