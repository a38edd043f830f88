#include "engine/edition2/parser.h"
#include "engine/script_vocabulary.h"
#include "look/theme.h"
#include "support/script_bench.h"
#include "ui/editing/script_editor.h"

#include <QLineEdit>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::ScriptEditor;
using plum::ScriptVocabulary;

namespace {

class ScriptEditorTest : public testing::Test
{
protected:
    ScriptEditorTest()
    {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(editor);
        column->addWidget(next);
        window.show();
        window.activateWindow();
        editor->setFocus();
    }

    QWidget window;
    ScriptVocabulary vocabulary;
    ScriptEditor *editor = new ScriptEditor(vocabulary, &window);
    QLineEdit *next = new QLineEdit(&window);
};

} // namespace

TEST_F(ScriptEditorTest, TabInTheEmptyEditorInsertsTheBeginning)
{
    EXPECT_EQ(editor->placeholderText(), ScriptEditor::beginning());
    QTest::keyClick(editor, Qt::Key_Tab);
    EXPECT_EQ(editor->toPlainText(), ScriptEditor::beginning());
    editor->undo();
    EXPECT_EQ(editor->script(), QString()) << "and it can be taken back";
}

TEST_F(ScriptEditorTest, TabElsewhereGoesOn)
{
    editor->setScript(u"set.a 1"_s);
    QTest::keyClick(editor, Qt::Key_Tab);
    EXPECT_EQ(editor->toPlainText(), u"set.a 1"_s);
    EXPECT_EQ(window.focusWidget(), next);
}

TEST_F(ScriptEditorTest, AnEmptyEditorHoldsAnEmptyScript)
{
    EXPECT_EQ(editor->script(), QString());
}

namespace {

// Whether the head of each line is shown as one that the language does not know.
QList<bool> unknownHeads(const QString &script)
{
    plum::recording::ScriptBench bench;
    const ScriptVocabulary vocabulary = bench.system.vocabulary();
    ScriptEditor editor(vocabulary, nullptr);
    editor.setTheme(plum::Theme::of(QPalette()));
    editor.setScript(script);
    QList<bool> unknown;
    for (QTextBlock block = editor.document()->begin(); block.isValid(); block = block.next()) {
        const auto formats = block.layout()->formats();
        unknown += !formats.isEmpty() && formats.first().format.underlineStyle() == QTextCharFormat::DotLine;
    }
    return unknown;
}

} // namespace

TEST(ScriptEditorColours, AreThoseOfTheScriptsEdition)
{
    const QString lines = u"\nwhen.start 1,is,1\nmouse.clik\nset.a 1"_s;
    EXPECT_EQ(unknownHeads(u"//edition:2"_s + lines), (QList<bool>{false, false, true, false}));
    EXPECT_EQ(
        unknownHeads(u"//guide:x\n//edition:2"_s + lines), (QList<bool>{false, false, false, true, false}));
    EXPECT_EQ(unknownHeads(u"// edition 1"_s + lines), (QList<bool>{false, true, true, false}));
}

TEST(ScriptEditorBeginning, IsAScriptWithoutMistakes)
{
    plum::recording::ScriptBench bench;
    EXPECT_TRUE(
        plum::edition2::parse(ScriptEditor::beginning(), bench.system.vocabulary()).mistakes.isEmpty());
}
