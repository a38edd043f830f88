#include "check/script_layout.h"
#include "engine/edition2/parser.h"
#include "support/manual_examples.h"
#include "support/printers.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

TEST(ScriptLayout, indentsTheBlocksOfEdition2)
{
    EXPECT_EQ(laidOut(u"  //edition:2 \nwhen.start set.a,is,1\nos.tips  \"  a \" \t\n // why\nwhen.else\n\n"
                      "repeat.times 2\nmouse.click\nrepeat.end\nwhen.end\nmouse.click"_s,
                  Edition::Two),
        u"//edition:2\nwhen.start set.a,is,1\n    os.tips  \"  a \"\n    // why\nwhen.else\n\n"
        "    repeat.times 2\n        mouse.click\n    repeat.end\nwhen.end\nmouse.click"_s);
}

TEST(ScriptLayout, givesEdition2TheLineEndsOfItsFirstLine)
{
    EXPECT_EQ(laidOut(u"//edition:2\r\nmouse.click\n"_s, Edition::Two), u"//edition:2\r\nmouse.click\r\n"_s);
    EXPECT_EQ(laidOut(u"//edition:2\nmouse.click\r\n"_s, Edition::Two), u"//edition:2\nmouse.click\n"_s);
}

TEST(ScriptLayout, bearsBlocksThatCloseTooOften)
{
    EXPECT_EQ(laidOut(u"//edition:2\nwhen.end\nwhen.end\ntry.start\nmouse.click"_s, Edition::Two),
        u"//edition:2\nwhen.end\nwhen.end\ntry.start\n    mouse.click"_s);
}

TEST(ScriptLayout, givesEdition1LineEndsAndLeavesItsBlanks)
{
    EXPECT_EQ(laidOut(u"  mouse.click \nset.a \" b \" \r\nx\ry"_s, Edition::One),
        u"  mouse.click \r\nset.a \" b \" \r\nx\r\ny"_s);
}

TEST(ScriptLayout, changesNothingOfWhatTheManualsExamplesMean)
{
    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    int compared = 0;
    for (const recording::ManualExample &example :
        recording::manualExamples(recording::ManualPage::Edition2)) {
        const QString script = example.script.join(u'\n');
        QString flat;
        for (const QString &line : example.script)
            flat += u'\t' + line.trimmed() + u" \n"_s;
        EXPECT_EQ(edition2::parse(laidOut(flat, Edition::Two), vocabulary).tree,
            edition2::parse(script, vocabulary).tree)
            << script.toStdString();
        ++compared;
    }
    EXPECT_GT(compared, 10);
}

} // namespace
} // namespace plum
