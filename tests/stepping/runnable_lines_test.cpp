#include "stepping/runnable_lines.h"

#include "control_bench.h"
#include "engine/run_time_error.h"
#include "support/manual_examples.h"

using namespace Qt::StringLiterals;
using namespace plum;
using recording::ExampleBench;
using recording::ManualExample;
using recording::manualExamples;
using recording::ManualPage;

namespace {

class RunnableLinesTest : public test::ControlBench
{
protected:
    ScriptVocabulary vocabulary = bench.system.vocabulary();
};

} // namespace

TEST_F(RunnableLinesTest, AreAllButCommentsAndEmptyLinesInEdition1)
{
    EXPECT_EQ(
        runnableLines("//guide:x\r\nset.a \"1\"\r\n\r\nwhile.end \r\nodd\r\n", vocabulary, Edition::One),
        (QList<int>{2, 4, 5}));
    // A lone LF ends no line there.
    EXPECT_EQ(runnableLines("set.a \"1\"\nset.b \"1\"\n", vocabulary, Edition::One), (QList<int>{1}));
}

TEST_F(RunnableLinesTest, AreThoseThatDoSomethingInEdition2)
{
    const QByteArray script = "//edition:2\n" // 1
                              "part.use \"x.wf\"\n"
                              "when.start set.a,is,1\n" // 3
                              "    set.b 1\n" // 4
                              "when.or set.a,is,2\n" // 5
                              "when.else\n"
                              "when.end\n"
                              "try.start\n"
                              "    repeat.while set.a,is,1\n" // 9
                              "        repeat.break\n" // 10
                              "    repeat.end\n"
                              "try.failed\n"
                              "try.end\n"
                              "part.start p\n"
                              "    part.return 1\n" // 15
                              "part.end\n";
    EXPECT_EQ(runnableLines(script, vocabulary, Edition::One), (QList<int>{3, 4, 5, 9, 10, 15}));
}

TEST_F(RunnableLinesTest, AreOfTheEditionOfWhoUsesThem)
{
    const QByteArray parts = "part.start p\n    set.a 1\npart.end\n";
    EXPECT_EQ(runnableLines(parts, vocabulary, Edition::Two), (QList<int>{2}));
}

// Wherever a run of the manual's examples can be held, a breakpoint can be.
TEST_F(RunnableLinesTest, HaveAllPlacesWhereRunsAreHeld)
{
    int places = 0;
    for (const ManualPage page : {ManualPage::Edition1, ManualPage::Edition2}) {
        const bool isSecond = page == ManualPage::Edition2;
        for (const ManualExample &example : manualExamples(page)) {
            SCOPED_TRACE("line " + std::to_string(example.line));
            QStringList lines = example.script;
            if (isSecond && !lines.first().startsWith("//edition:"_L1))
                lines.prepend(u"//edition:2"_s);
            const QByteArray script = lines.join(isSecond ? u"\n"_s : u"\r\n"_s).toUtf8();
            const QList<int> runnable = runnableLines(script, vocabulary, Edition::One);
            ExampleBench examples(example);
            RunControl everywhere([&](const RunControl::Hold &hold) {
                const int line = hold.run.place(0).line;
                EXPECT_TRUE(runnable.contains(line)) << line;
                ++places;
                return Going::Into;
            });
            everywhere.holdAtEntry();
            examples.state.observer = &everywhere;
            examples.system.starts().prepareFile(files.write(u"main.wf"_s, script));
            try {
                examples.system.starts().runAll();
            } catch (const ScriptError &) {
                // Some examples show mistakes.
            } catch (const RunTimeError &) {
            }
        }
    }
    EXPECT_GT(places, 100);
}
