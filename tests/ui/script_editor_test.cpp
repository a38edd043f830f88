#include "engine/edition2/parser.h"
#include "engine/script_vocabulary.h"
#include "support/script_bench.h"
#include "ui/editing/script_editor.h"

#include <QLineEdit>
#include <QTest>
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

TEST(ScriptEditorBeginning, IsAScriptWithoutMistakes)
{
    plum::recording::ScriptBench bench;
    EXPECT_TRUE(
        plum::edition2::parse(ScriptEditor::beginning(), bench.system.vocabulary()).mistakes.isEmpty());
}
