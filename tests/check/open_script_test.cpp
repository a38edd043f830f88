#include "check/open_script.h"
#include "support/dice.h"
#include "support/printers.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

TEST(OpenScript, replacesBetweenPlacesOfUtf16)
{
    OpenScript script({}, u"set.a \"😀é\"\r\nmouse.click\r\n"_s);
    script.replace({0, 9}, {0, 10}, u"e"_s); // behind the two units of the smiling face
    EXPECT_EQ(script.text(), u"set.a \"😀e\"\r\nmouse.click\r\n"_s);
    script.replace({0, 11}, {1, 0}, u" "_s);
    EXPECT_EQ(script.text(), u"set.a \"😀e\" mouse.click\r\n"_s);
    script.replace({0, 99}, {99, 0}, u"x"_s); // behind the ends
    EXPECT_EQ(script.text(), u"set.a \"😀e\" mouse.clickx"_s);
}

TEST(OpenScript, countsLinesAsItsEditionAndAsEditorsDo)
{
    const OpenScript first({}, u"a\nb\rc\r\nd"_s);
    EXPECT_EQ(first.lines(), QStringList({u"a\nb"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(first.editorLineCount(), 4);
    EXPECT_EQ(first.editorLine(1), u"b"_s);
    EXPECT_EQ(first.toEditor(1, 3), (EditorPlace{1, 0}));
    EXPECT_EQ(first.toEditor(2, 1), (EditorPlace{2, 0}));
    EXPECT_EQ(first.fromEditor({1, 1}).column, 4);
    EXPECT_EQ(first.fromEditor({3, 0}).line, 3);

    const OpenScript second({}, u"//edition:2\na\rb\r\nc"_s);
    EXPECT_EQ(second.edition(), Edition::Two);
    EXPECT_EQ(second.lines(), QStringList({u"//edition:2"_s, u"a\rb"_s, u"c"_s}));
    EXPECT_EQ(second.toEditor(3, 1), (EditorPlace{3, 0}));
}

TEST(OpenScript, takesTheEditionFromBehindALongGuideLine)
{
    const QString guide = u"//guide:"_s + QString(10'000, u'x');
    EXPECT_EQ(OpenScript({}, guide + u"\n//edition:2\nmouse.click\n"_s).edition(), Edition::Two);
}

// Whatever is changed where: every place of an editor leads to the script and back.
TEST(OpenScript, translatesEveryPlaceBack)
{
    recording::Dice dice(1);
    OpenScript script({}, u"one\r\ntwo"_s);
    for (int step = 0; step < 2000; ++step) {
        const EditorPlace from{dice.below(5), dice.below(6)};
        script.replace(
            from, {from.line + dice.below(2), dice.below(6)}, dice.text("ab\r\n\""_L1, dice.below(4)));
        for (int line = 0; line < script.editorLineCount(); ++line) {
            for (int character = 0; character <= script.editorLine(line).size(); ++character) {
                const OpenScript::ScriptPlace place = script.fromEditor({line, character});
                ASSERT_EQ(script.toEditor(place.line, place.column), (EditorPlace{line, character}))
                    << script.text().toStdString();
            }
        }
    }
}

} // namespace
} // namespace plum
