#include "stepping/line_arguments.h"

#include "control_bench.h"

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class LineArgumentsTest : public test::ControlBench
{
protected:
    // Collects "name=value" of the arguments where a line is held.
    void at(int line)
    {
        control.setBreakpoints({}, {line});
        onHold = [this](const RunControl::Hold &hold) {
            for (const LineArgument &argument : argumentsOf(hold.run, 0, m_vocabulary)) {
                const Evaluation value = valueOf(hold.run, 0, argument);
                found += argument.name + u'='
                    + (value.problem.isEmpty() ? value.value : u"!"_s + value.problem);
            }
        };
    }

    QStringList found;

private:
    ScriptVocabulary m_vocabulary = bench.system.vocabulary();
};

} // namespace

TEST_F(LineArgumentsTest, AreEvaluatedBeforeALineOfEdition1)
{
    at(2);
    run1({u"set.who \"Ann\""_s, u"text.replace \"r\",set.who,\"A\",\"E_,_\",\"\",\"\",\"\""_s});
    ASSERT_GE(found.size(), 4);
    EXPECT_TRUE(found[0].endsWith(u"=r"_s)) << qPrintable(found.join(u'|'));
    EXPECT_TRUE(found[1].endsWith(u"=Ann"_s)) << qPrintable(found.join(u'|'));
    EXPECT_TRUE(found[3].endsWith(u"=E,"_s)) << qPrintable(found.join(u'|'));
}

TEST_F(LineArgumentsTest, AreCutWhereTheirCommandOfEdition1CutsThem)
{
    at(1);
    run1({u"keyboard.send Dear Ann, hello+?++(str.none)"_s, u"set.a \"1\""_s});
    EXPECT_EQ(found, QStringList(u"text=Dear Ann, hello"_s));
    found.clear();
    run1({u"set.all \"a,b\""_s, u"set.a \"1\""_s});
    EXPECT_EQ(found, QStringList(u"value=a,b"_s));
}

TEST_F(LineArgumentsTest, AreEvaluatedBeforeALineOfEdition2)
{
    at(3);
    run2("set.n 3\nmouse.move $\"{n}:4\"\n");
    EXPECT_EQ(found, QStringList(u"to=3:4"_s));
}

TEST_F(LineArgumentsTest, AreThoseOfBlocksAndParts)
{
    at(3);
    run2("set.n 3\nwhen.start set.n,is,4\nwhen.end\n");
    ASSERT_EQ(found.size(), 3) << qPrintable(found.join(u'|'));
    EXPECT_TRUE(found[0].endsWith(u"=3"_s) && found[1].endsWith(u"=is"_s) && found[2].endsWith(u"=4"_s))
        << qPrintable(found.join(u'|'));
    found.clear();
    run2("set.n 3\npart.run p,set.n,$\"<{n}>\"\npart.start p,a,b\npart.end\n");
    EXPECT_EQ(found, (QStringList{u"name=p"_s, u"value=3"_s, u"value=<3>"_s}));
}

TEST_F(LineArgumentsTest, SayWhatIsWrongWithThem)
{
    at(2);
    run2("mouse.move set.nowhere\n");
    EXPECT_EQ(found, QStringList(u"to=!nowhere was never set"_s));
}
