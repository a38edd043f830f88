#include "ui/editor_fixture.h"

#include "support/chinese_session.h"
#include "ui/editing/script_editor.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QShortcut>
#include <QToolTip>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class EditorFindingsTest : public EditorTest
{
protected:
    ScriptEditor *editor() { return find<ScriptEditor>("Text4"); }
    QString note()
    {
        return find<QLabel>("findings")->isVisible() ? find<QLabel>("findings")->text() : u""_s;
    }

    bool finds(int errors, int warnings)
    {
        return waitUntil([&] {
            return editor()->findingCount(Severity::Error) == errors
                && editor()->findingCount(Severity::Warning) == warnings;
        });
    }

    void press(const QString &keys)
    {
        for (auto *shortcut : find("addeditbox")->findChildren<QShortcut *>()) {
            if (shortcut->key() == QKeySequence(keys))
                Q_EMIT shortcut->activated();
        }
    }

    void putCaret(int line, int column)
    {
        QTextCursor caret(editor()->document()->findBlockByNumber(line));
        caret.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, column);
        editor()->setTextCursor(caret);
    }

    // The first line that can be seen has an error of its own.
    const QByteArray mistaken = "mouse.clik\r\nset.a \"1\"\r\nos.tips set.a\r\nmouse.movr \"1:1\"\r\n";
};

} // namespace

TEST_F(EditorFindingsTest, theLineOfTheCaretSaysWhatWasFoundInIt)
{
    edit(mistaken);
    ASSERT_TRUE(finds(2, 0));
    EXPECT_TRUE(note().startsWith(u"mouse has no command \"clik\""_s)) << note().toStdString();
    EXPECT_TRUE(note().endsWith(u"[unknown-command] (1 more in this line)"_s)) << note().toStdString();
    // A screen reader says it with the editor.
    EXPECT_EQ(editor()->accessibleDescription(), editor()->findingsAtCaret().join(u'\n'));
    EXPECT_EQ(editor()->findingsAtCaret().size(), 2);
    putCaret(1, 0);
    EXPECT_EQ(note(), u"Errors: 2 · warnings: 0 · hints: 1 · F8 goes to the next one"_s);
    EXPECT_TRUE(editor()->accessibleDescription().isEmpty());
}

TEST_F(EditorFindingsTest, inAChineseSessionTheSentencesAreChinese)
{
    const test::ChineseSession session;
    edit(mistaken);
    ASSERT_TRUE(finds(2, 0));
    EXPECT_TRUE(note().startsWith(u"mouse 没有命令“clik”"_s)) << note().toStdString();
    EXPECT_EQ(editor()->accessibleDescription(), editor()->findingsAtCaret().join(u'\n'));
}

TEST_F(EditorFindingsTest, whatIsTypedIsLookedAtWithoutSaving)
{
    edit("mouse.click\r\n");
    type(editor(), u"x"_s);
    EXPECT_TRUE(finds(1, 0));
    editor()->undo();
    EXPECT_TRUE(finds(0, 0));
    EXPECT_EQ(note(), QString());
    EXPECT_EQ(saved(), "mouse.click\r\n");
}

TEST_F(EditorFindingsTest, F8GoesFromOneToTheNextAndAround)
{
    edit(mistaken);
    ASSERT_TRUE(finds(2, 0));
    putCaret(1, 0);
    press(u"F8"_s);
    EXPECT_EQ(editor()->textCursor().blockNumber(), 3);
    press(u"F8"_s);
    EXPECT_EQ(editor()->textCursor().blockNumber(), 0);
    press(u"Shift+F8"_s);
    EXPECT_EQ(editor()->textCursor().blockNumber(), 3);
    EXPECT_TRUE(editor()->hasFocus());
}

// What is found is at the place where it stands, whatever ends the lines above.
TEST_F(EditorFindingsTest, everyLineEndOfTheFileIsCountedOnce)
{
    edit("//edition:2\nos.tips \"1\xE2\x80\xA9"
         "2\"\nmouse.click\r\nmouse.clik\r\n");
    ASSERT_TRUE(finds(1, 0));
    press(u"F8"_s);
    EXPECT_EQ(editor()->textCursor().block().text(), u"mouse.clik"_s);
}

// The file is what will run, not the lines that the editor shows of it.
TEST_F(EditorFindingsTest, lineEndsThatNoRunKnowsAreFoundUntilTheyAreMended)
{
    edit("set.a \"1\"\nos.tips set.a\n");
    ASSERT_TRUE(finds(1, 1));
    EXPECT_TRUE(note().contains(u"[lf-line-ends]"_s)) << note().toStdString();
    Q_EMIT find<QLabel>("lineEnds")->linkActivated(u"mend"_s);
    EXPECT_TRUE(finds(0, 0));
}

TEST_F(EditorFindingsTest, theFilesOfTheAppAreKnown)
{
    folder.addApp(u"app"_s, "");
    QImage picture(16, 16, QImage::Format_RGB32);
    for (int pixel = 0; pixel < 256; ++pixel)
        picture.setPixel(pixel % 16, pixel / 16, pixel % 7 % 3 == 0 ? 0xffffff : 0x000000);
    ASSERT_TRUE(picture.save(folder.apps(u"app/there.png"_s)));
    edit("//edition:2\r\nos.find_pic \"_pfold_/there.png\"\r\nos.find_pic \"_pfold_/gone.png\"\r\n");
    ASSERT_TRUE(finds(0, 1));
    putCaret(1, 0);
    EXPECT_TRUE(editor()->findingsAtCaret().isEmpty());
    putCaret(2, 0);
    EXPECT_TRUE(note().contains(u"[missing-file]"_s)) << note().toStdString();
}

TEST_F(EditorFindingsTest, underlinesMoveWithTheirText)
{
    edit(mistaken);
    ASSERT_TRUE(finds(2, 0));
    putCaret(1, 0);
    editor()->insertPlainText(u"\n\n"_s);
    putCaret(5, 0);
    EXPECT_TRUE(editor()->findingsAtCaret().value(0).contains(u"movr"_s));
}

TEST_F(EditorFindingsTest, theTipOverAnUnderlineIsItsSentence)
{
    edit(mistaken);
    ASSERT_TRUE(finds(2, 0));
    putCaret(0, 8);
    QWidget *viewport = editor()->viewport();
    const auto rest = [&](QPoint at) {
        QHelpEvent event(QEvent::ToolTip, at, viewport->mapToGlobal(at));
        QApplication::sendEvent(viewport, &event);
    };
    rest(editor()->cursorRect().center());
    EXPECT_TRUE(QToolTip::text().contains(u"mouse has no command \"clik\""_s.toHtmlEscaped()))
        << QToolTip::text().toStdString();
    putCaret(1, 2);
    rest(editor()->cursorRect().center());
    EXPECT_TRUE(waitUntil([] { return !QToolTip::isVisible(); }));
}

TEST_F(EditorFindingsTest, theLinesHaveNumbersAndMarks)
{
    edit(mistaken);
    ASSERT_TRUE(finds(2, 0));
    const std::vector<ScriptEditor::Row> rows = editor()->rows();
    ASSERT_GE(rows.size(), 4U);
    EXPECT_EQ(rows[3].line, 3);
    EXPECT_EQ(rows[3].severity, Severity::Error);
    EXPECT_EQ(rows[1].severity, std::nullopt);
    EXPECT_GT(rows[1].top, rows[0].top);
    const QRect numbers = find("lineNumbers")->geometry();
    const QRect text = editor()->viewport()->geometry();
    EXPECT_EQ(numbers.right() + 1, text.left());
    EXPECT_EQ(numbers.height(), text.height());
}

TEST_F(EditorFindingsTest, theNumbersGetRoomAsTheScriptGrows)
{
    edit("mouse.click\r\n");
    const int before = find("lineNumbers")->width();
    editor()->setPlainText(QString(1000, u'\n'));
    EXPECT_GT(find("lineNumbers")->width(), before);
    EXPECT_EQ(find("lineNumbers")->geometry().right() + 1, editor()->viewport()->geometry().left());
}

} // namespace plum
