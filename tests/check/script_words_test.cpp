#include "check/script_words.h"
#include "support/printers.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

class ScriptWordsTest : public testing::Test
{
protected:
    QStringList completed(const QString &before, Edition edition = Edition::Two)
    {
        QStringList texts;
        for (const ScriptWords::Suggestion &each : words.completion(lines, before, edition).suggestions)
            texts += each.text;
        return texts;
    }

    const ScriptWords words{recording::ScriptBench().system.vocabulary()};
    const QStringList lines{u"//edition:2"_s, u"set.window 1"_s, u"set.width 2"_s};
};

TEST_F(ScriptWordsTest, wordsBeginWhereASuggestionTakesTheirPlace)
{
    const std::pair<QString, qsizetype> rows[]{
        {u""_s, 0},
        {u"mou"_s, 0},
        {u"    mou"_s, 4},
        {u"    "_s, 4},
        {u"mouse.cl"_s, 6},
        {u"  mouse.cl"_s, 8},
        {u"os.tips "_s, 8},
        {u"os.tips set.w"_s, 8},
        {u"window.get window_xy,set.w"_s, 21},
        {u"window.get window_xy, set.w"_s, 22},
        {u"window.get \"mouse_w"_s, 12},
        {u"file.open \"_pfold_/a b, c"_s, 11},
        {u"os.tips \"a\""_s, 11},
    };
    for (const auto &[before, start] : rows)
        EXPECT_EQ(ScriptWords::wordStart(before), start) << before.toStdString();
}

TEST_F(ScriptWordsTest, completionGoesOnWithTheWordInAnyLetterCase)
{
    EXPECT_EQ(completed(u"mou"_s), QStringList(u"mouse"_s));
    EXPECT_EQ(completed(u"  MOU"_s), QStringList(u"mouse"_s));
    EXPECT_EQ(completed(u"mouse.d_"_s), QStringList(u"d_click"_s));
    EXPECT_EQ(completed(u"os.tips set.wi"_s), QStringList({u"set.width"_s, u"set.window"_s}));
    EXPECT_EQ(completed(u"window.get mouse_"_s), QStringList(u"mouse_window"_s));
    EXPECT_EQ(completed(u"nothing.x"_s), QStringList());
    EXPECT_EQ(completed(u"// mou"_s), QStringList());
}

TEST_F(ScriptWordsTest, aWordThatIsThereIsNotCompleted)
{
    EXPECT_EQ(completed(u"mouse.click"_s), QStringList());
    EXPECT_EQ(completed(u"os.tips set.window"_s), QStringList());
}

TEST_F(ScriptWordsTest, missingQuotesComeWithAWordOfEdition1)
{
    EXPECT_EQ(completed(u"window.get mouse_"_s, Edition::One), QStringList(u"\"mouse_window\""_s));
    EXPECT_EQ(completed(u"window.get \"mouse_"_s, Edition::One), QStringList(u"mouse_window"_s));
}

} // namespace
} // namespace plum
