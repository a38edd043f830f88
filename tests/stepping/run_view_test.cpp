#include "engine/editions/run_view.h"

#include "control_bench.h"
#include "stepping/line_arguments.h"

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class RunViewTest : public test::ControlBench
{
protected:
    // Has expressions evaluated where line `line` is held; problems begin with "!".
    void evaluateAt(int line, const QStringList &expressions)
    {
        control.setBreakpoints({}, {line});
        onHold = [this, expressions](const RunControl::Hold &hold) {
            for (const QString &expression : expressions) {
                const Evaluation value = hold.run.evaluate(0, expression);
                found += value.problem.isEmpty() ? value.value : u"!"_s + value.problem;
            }
        };
    }

    QStringList found;
};

} // namespace

TEST_F(RunViewTest, ShowsAndChangesVariables)
{
    control.setBreakpoints({}, {3});
    QStringList names;
    onHold = [&](const RunControl::Hold &hold) {
        names = hold.run.variables(0);
        EXPECT_EQ(hold.run.variable(0, u"at"_s), u"1:1"_s);
        EXPECT_EQ(hold.run.text(0).trimmed(), u"mouse.move set.at"_s);
        hold.run.setVariable(0, u"at"_s, u"7:8"_s);
    };
    run1({u"set.other \"x\""_s, u"set.at \"1:1\""_s, u"mouse.move set.at"_s});
    EXPECT_EQ(names, (QStringList{u"at"_s, u"other"_s}));
    EXPECT_TRUE(bench.events().contains(u"move 7 8"_s)) << qPrintable(bench.events().join(u'|'));

    control.setBreakpoints({}, {4});
    run2("set.other 1\nset.at 1:1\nmouse.move set.at\n");
    EXPECT_EQ(bench.events().filter(u"move 7 8"_s).size(), 2) << qPrintable(bench.events().join(u'|'));
}

TEST_F(RunViewTest, ShowsTheVariablesOfEachFrame)
{
    control.setBreakpoints({}, {5});
    onHold = [](const RunControl::Hold &hold) {
        ASSERT_EQ(hold.run.depth(), 2);
        EXPECT_EQ(hold.run.variables(0), QStringList(u"inner"_s));
        EXPECT_EQ(hold.run.variables(1), QStringList(u"outer"_s));
        hold.run.setVariable(1, u"outer"_s, u"changed"_s);
    };
    run2("set.outer 1\npart.run p,2\npart.start p,inner\n    set.x set.inner\npart.end\n");
    EXPECT_EQ(held, QStringList(u"breakpoint 5"_s));
}

TEST_F(RunViewTest, EvaluatesWhatEdition1Writes)
{
    evaluateAt(2, {u"set.who"_s, u"Hello +?+!+(set.who)"_s, u"\"a_,_b\""_s, u"bare"_s, u"mouse.xy"_s});
    run1({u"set.who \"Ann\""_s, u"set.b \"1\""_s});
    EXPECT_EQ(found, (QStringList{u"Ann"_s, u"Hello Ann!"_s, u"a,b"_s, u""_s, u"0:0"_s}));
}

TEST_F(RunViewTest, EvaluatesWhatEdition2Writes)
{
    evaluateAt(3,
        {u"set.who"_s, u"$\"Hello {who}\""_s, u"3:4"_s, u"set.nobody"_s, u"bare"_s, u"\"open"_s, u"1,2"_s,
            u""_s, u"mouse.xy"_s});
    run2("set.who \"Ann\"\nset.b 1\n");
    ASSERT_EQ(found.size(), 9);
    EXPECT_EQ(found.first(5),
        (QStringList{
            u"Ann"_s, u"Hello Ann"_s, u"3:4"_s, u"!nobody was never set"_s, u"!bare was never set"_s}));
    for (const QString &problem : found.sliced(5, 3))
        EXPECT_TRUE(problem.startsWith(u'!')) << qPrintable(problem);
    EXPECT_EQ(found.last(), u"0:0"_s);
}

TEST_F(RunViewTest, LeavesNoTraceOfWhatItEvaluates)
{
    evaluateAt(2, {u"os.get_clipboard"_s});
    run1({u"set.who \"Ann\""_s, u"set.b \"1\""_s});
    EXPECT_EQ(bench.state.observer, &control);
    EXPECT_EQ(bench.state.refused, QString());
}
