#include "ui/editor_fixture.h"

#include "support/chinese_session.h"
#include "ui/editing/completion_list.h"
#include "ui/editing/script_editor.h"

#include <QInputMethodEvent>
#include <QLabel>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class EditorCompletionTest : public EditorTest
{
protected:
    ScriptEditor *editor() { return find<ScriptEditor>("Text4"); }
    CompletionList *list() { return find<CompletionList>("completions"); }
    QString text() { return editor()->toPlainText(); }

    // The editor with the caret behind the last character.
    void editAtEnd(const QByteArray &script)
    {
        edit(script);
        editor()->moveCursor(QTextCursor::End);
        ASSERT_TRUE(editor()->hasFocus());
    }

    QStringList offered()
    {
        QStringList texts;
        for (int row = 0; row < list()->count(); ++row)
            texts += list()->item(row)->text();
        return texts;
    }

    bool opens()
    {
        return waitUntil([&] { return list()->isVisible(); });
    }

    void typeLine(const QString &line)
    {
        key(editor(), Qt::Key_Return, u"\r"_s);
        type(editor(), line);
    }

    void ask() { key(editor(), Qt::Key_Space, u" "_s, Qt::ControlModifier); }

    // As the window system sends it, which Tab is taken by on its way to the editor.
    void pressInWindow(int which) { key(ui.window()->focusWidget(), which); }
};

} // namespace

TEST_F(EditorCompletionTest, whatCanGoOnIsListedWhileOneTypes)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"mou"_s);
    ASSERT_TRUE(opens());
    EXPECT_EQ(offered(), QStringList(u"mouse"_s));
    key(editor(), Qt::Key_Return, u"\r"_s);
    EXPECT_EQ(text(), u"//edition:2\nmouse"_s);
    EXPECT_FALSE(list()->isVisible());
    type(editor(), u".d_"_s);
    ASSERT_TRUE(opens());
    EXPECT_EQ(offered(), QStringList(u"d_click"_s));
    pressInWindow(Qt::Key_Tab);
    EXPECT_EQ(text(), u"//edition:2\nmouse.d_click"_s);
    EXPECT_TRUE(editor()->hasFocus());
}

TEST_F(EditorCompletionTest, anOpenListFollowsWhatIsTypedAtOnce)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"mouse."_s);
    ASSERT_TRUE(opens());
    ASSERT_GT(list()->count(), 2);
    type(editor(), u"d_"_s);
    EXPECT_EQ(offered(), QStringList(u"d_click"_s));
    type(editor(), u"x"_s);
    EXPECT_FALSE(list()->isVisible()) << "nothing begins so";
}

TEST_F(EditorCompletionTest, aWordThatIsWholeIsNotInTheWay)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"mouse.clic"_s);
    ASSERT_TRUE(opens());
    type(editor(), u"k"_s);
    EXPECT_FALSE(list()->isVisible());
    key(editor(), Qt::Key_Return, u"\r"_s);
    EXPECT_EQ(text(), u"//edition:2\nmouse.click\n"_s);
}

TEST_F(EditorCompletionTest, arrowsChooseAndEscClosesTheListAlone)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"window."_s);
    ASSERT_TRUE(opens());
    EXPECT_EQ(list()->currentRow(), 0);
    key(editor(), Qt::Key_Down);
    EXPECT_EQ(list()->currentRow(), 1);
    key(editor(), Qt::Key_Up);
    key(editor(), Qt::Key_Up);
    EXPECT_EQ(list()->currentRow(), list()->count() - 1);
    key(editor(), Qt::Key_Escape);
    EXPECT_FALSE(list()->isVisible());
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(text(), u"//edition:2\nwindow."_s);
}

TEST_F(EditorCompletionTest, withoutAListTheKeysMeanWhatTheyMeant)
{
    editAtEnd("mouse.click\r\n");
    key(editor(), Qt::Key_Return, u"\r"_s);
    EXPECT_EQ(text(), u"mouse.click\n"_s);
    pressInWindow(Qt::Key_Tab);
    EXPECT_FALSE(editor()->hasFocus());
    EXPECT_EQ(text(), u"mouse.click\n"_s);
}

// Of the words that a command takes nothing is marked before something is typed: Enter ends the line.
TEST_F(EditorCompletionTest, inFrontOfAnEmptyWordEnterEndsTheLine)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"window.get "_s);
    ASSERT_TRUE(opens());
    EXPECT_TRUE(offered().contains(u"active_window"_s));
    EXPECT_EQ(list()->currentRow(), -1);
    key(editor(), Qt::Key_Return, u"\r"_s);
    EXPECT_EQ(text(), u"//edition:2\nwindow.get \n"_s);
}

TEST_F(EditorCompletionTest, ctrlSpaceAsksAndTheScriptsOwnNamesAreOffered)
{
    editAtEnd("//edition:2\r\nset.width 1\r\nset.window 2\r\nos.tips ");
    ask();
    ASSERT_TRUE(list()->isVisible());
    EXPECT_EQ(offered().first(2), QStringList({u"set.width"_s, u"set.window"_s}));
    EXPECT_EQ(list()->currentRow(), 0);
}

TEST_F(EditorCompletionTest, theMarkedOneIsExplained)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"mouse.d_"_s);
    ASSERT_TRUE(opens());
    EXPECT_TRUE(find<QLabel>("findings")->text().startsWith(u"d_click: "_s))
        << find<QLabel>("findings")->text().toStdString();
}

TEST_F(EditorCompletionTest, inAChineseSessionItIsExplainedInChinese)
{
    const test::ChineseSession session;
    editAtEnd("//edition:2\r\n");
    typeLine(u"mouse.d_"_s);
    ASSERT_TRUE(opens());
    const QString note = find<QLabel>("findings")->text();
    EXPECT_TRUE(note.startsWith(u"d_click: "_s) && note.contains(u"双击"_s)) << note.toStdString();
}

TEST_F(EditorCompletionTest, undoBringsBackWhatWasTyped)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"mou"_s);
    ASSERT_TRUE(opens());
    key(editor(), Qt::Key_Return, u"\r"_s);
    editor()->undo();
    EXPECT_EQ(text(), u"//edition:2\nmou"_s);
    click(find("Image9"));
}

TEST_F(EditorCompletionTest, whatIsBeingComposedIsLeftAlone)
{
    editAtEnd("//edition:2\r\n");
    typeLine(u"mou"_s);
    ASSERT_TRUE(opens());
    QInputMethodEvent composing(u"ni"_s, {});
    QApplication::sendEvent(editor(), &composing);
    EXPECT_FALSE(list()->isVisible());
    QInputMethodEvent committed;
    committed.setCommitString(u"你"_s);
    QApplication::sendEvent(editor(), &committed);
    EXPECT_EQ(text(), u"//edition:2\nmou你"_s);
}

TEST_F(EditorCompletionTest, theListStaysInTheEditor)
{
    editAtEnd("//edition:2\r\n" + QByteArray("os.tips \"a\"\r\n").repeated(40) + "mouse.");
    ask();
    ASSERT_TRUE(list()->isVisible());
    EXPECT_TRUE(editor()->rect().contains(list()->geometry()));
    const QRect caret(editor()->viewport()->mapTo(editor(), editor()->cursorRect().topLeft()),
        editor()->cursorRect().size());
    EXPECT_FALSE(list()->geometry().intersects(caret));
}

TEST_F(EditorCompletionTest, aClickTakesARow)
{
    editAtEnd("//edition:2\r\nmouse.");
    ask();
    ASSERT_TRUE(list()->isVisible());
    const QString second = offered().value(1);
    click(list()->viewport(), Qt::LeftButton, list()->visualItemRect(list()->item(1)).center());
    EXPECT_EQ(text(), u"//edition:2\nmouse."_s + second);
    EXPECT_TRUE(editor()->hasFocus());
}

} // namespace plum
