#include "ui/editor_fixture.h"

#include "ui/editing/edit_panel.h"
#include "ui/editing/script_editor.h"

#include <QLabel>
#include <QShortcut>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The editor, with somebody who picks for it.
class EditorPickingTest : public EditorTest
{
protected:
    void pick(QTextCursor::MoveOperation caret = QTextCursor::Start)
    {
        editor().moveCursor(caret);
        click(find("pick"));
        ASSERT_TRUE(waitUntil([this] { return static_cast<bool>(pickAnswer); }));
    }

    void answer(const PickedText &picked)
    {
        pickAnswer(picked);
        EXPECT_TRUE(ui.window()->isVisible());
        EXPECT_EQ(ui.window()->focusWidget(), &editor());
    }

    ScriptEditor &editor() { return *find<ScriptEditor>("Text4"); }
    QString note() { return find<QLabel>("findings")->text(); }
};

} // namespace

TEST_F(EditorPickingTest, linesComeBelowThatOfTheCaret)
{
    edit("note.down \"a\"\r\nnote.down \"b\"\r\n");
    pick();
    answer({{u"mouse.move \"1:2\""_s, u"window.get \"mouse_window\",\"window\""_s}, u"Point 1:2"_s});
    EXPECT_EQ(editor().script(),
        u"note.down \"a\"\r\nmouse.move \"1:2\"\r\nwindow.get \"mouse_window\",\"window\"\r\nnote.down \"b\""_s);
    EXPECT_EQ(editor().textCursor().blockNumber(), 2);
    EXPECT_TRUE(note().contains(u"Point 1:2"_s)) << note().toStdString();
    editor().moveCursor(QTextCursor::Start);
    EXPECT_FALSE(note().contains(u"Point 1:2"_s)) << "it is said of the line that came";
}

TEST_F(EditorPickingTest, anEmptyLineIsTheLine)
{
    edit("note.down \"a\"\r\n\r\n");
    pick(QTextCursor::End);
    answer({{u"mouse.move \"1:2\""_s}, {}});
    EXPECT_EQ(editor().script(), u"note.down \"a\"\r\nmouse.move \"1:2\""_s);
}

TEST_F(EditorPickingTest, oneUndoTakesThemBack)
{
    edit("note.down \"a\"\r\n");
    pick();
    answer({{u"mouse.move \"1:2\""_s, u"mouse.click"_s}, {}});
    editor().undo();
    EXPECT_EQ(editor().script(), u"note.down \"a\""_s);
}

TEST_F(EditorPickingTest, theLauncherIsOutOfTheWayMeanwhile)
{
    edit("note.down \"a\"\r\n");
    pick();
    EXPECT_FALSE(ui.window()->isVisible());
    answer({});
    EXPECT_TRUE(ui.window()->isVisible());
    EXPECT_EQ(editor().script(), u"note.down \"a\""_s);
    EXPECT_FALSE(ui.window()->editPanel().isModified());
}

TEST_F(EditorPickingTest, linesAreAskedForInTheScriptsEditionAndPicturesForItsApp)
{
    edit("note.down \"a\"\r\n");
    pick();
    EXPECT_EQ(pickRequest.edition, Edition::One);
    EXPECT_EQ(QDir(pickRequest.folder), QDir(folder.apps(u"app"_s)));
    answer({});
    pickAnswer = {};
    editor().setPlainText(u"//edition:2\nmouse.click"_s);
    pick();
    EXPECT_EQ(pickRequest.edition, Edition::Two);
    answer({});
}

TEST_F(EditorPickingTest, aNewAppHasNoFolderYet)
{
    start();
    ui.window()->editPanel().openForAdding(u"new"_s);
    ui.window()->showEditPanel();
    pick();
    EXPECT_EQ(pickRequest.folder, QString());
    answer({});
}

TEST_F(EditorPickingTest, ctrlPAsksToo)
{
    edit("note.down \"a\"\r\n");
    for (QShortcut *shortcut : ui.window()->findChildren<QShortcut *>()) {
        if (shortcut->key() == QKeySequence(u"Ctrl+P"_s))
            Q_EMIT shortcut->activated();
    }
    ASSERT_TRUE(waitUntil([this] { return static_cast<bool>(pickAnswer); }));
    answer({});
}

} // namespace plum
