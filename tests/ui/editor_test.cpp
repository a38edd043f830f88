#include "ui/frm_set_fixture.h"

#include "ui/editing/edit_panel.h"
#include "ui/editing/script_editor.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;

namespace {

// The launcher with an app that is open in the editor.
class EditorTest : public FrmSetTest
{
protected:
    void edit(const QByteArray &script)
    {
        folder.addApp(u"app"_s, script);
        recording::writeBytes(folder.configTxt(), "app\r\n");
        start();
        rightClick("List", 0);
        listAction("editok")->trigger();
        if (QWidget *menu = topLevel("list2you"))
            menu->hide();
    }

    bool isEditing() { return find("addeditbox")->isVisible(); }
    QByteArray saved() { return bytesOf(folder.apps(u"app/main.wf"_s)); }
};

} // namespace

TEST_F(EditorTest, backWithUnsavedTextMayBeTakenBack)
{
    edit("one\r\n");
    type(find("Text4"), u"x"_s);
    user.answer = QMessageBox::Cancel;
    click(find("Image9"));
    EXPECT_EQ(user.seen, QStringList(u"\"app\" is not saved."_s));
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(find<ScriptEditor>("Text4")->script(), u"xone"_s);
}

TEST_F(EditorTest, backWithUnsavedTextSavesOnRequest)
{
    edit("one\r\n");
    type(find("Text4"), u"x"_s);
    user.answer = QMessageBox::Save;
    click(find("Image9"));
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(saved(), "xone\r\n");
}

TEST_F(EditorTest, backWithUnsavedTextDiscardsOnRequest)
{
    edit("one\r\n");
    type(find("Text4"), u"x"_s);
    user.answer = QMessageBox::Discard;
    click(find("Image9"));
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(saved(), "one\r\n");
}

TEST_F(EditorTest, backWithoutAChangeAsksNothing)
{
    edit("one\r\n");
    click(find("Image9"));
    EXPECT_FALSE(isEditing());
    EXPECT_TRUE(user.seen.isEmpty());
}

TEST_F(EditorTest, exitWithUnsavedTextAsksToo)
{
    edit("one\r\n");
    type(find("Text4"), u"x"_s);
    user.answer = QMessageBox::Cancel;
    ui.exit();
    EXPECT_EQ(user.seen.size(), 1);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(EditorTest, aNewAppThatWasBegunIsNotDroppedSilently)
{
    start();
    ui.window()->editPanel().openForAdding();
    ui.window()->showEditPanel();
    type(find("Text7"), u"new"_s);
    user.answer = QMessageBox::Cancel;
    click(find("Image9"));
    EXPECT_EQ(user.seen, QStringList(u"\"new\" is not saved."_s));
    EXPECT_TRUE(isEditing());
}

TEST_F(EditorTest, savingKeepsTheBytesOfUnchangedLinesAndTheLastLineEnd)
{
    edit("one\ntwo\xE2\x80\xA9three\r\n");
    type(find("Text4"), u"x"_s);
    click(find("Image5"));
    EXPECT_EQ(saved(), "xone\ntwo\xE2\x80\xA9three\r\n");
}

TEST_F(EditorTest, lineEndsAreMendedWhenAskedAndThatIsSaid)
{
    edit("one\ntwo\n");
    auto *note = find<QLabel>("lineEnds");
    EXPECT_TRUE(note->isVisible());
    Q_EMIT note->linkActivated(u"mend"_s);
    click(find("Image5"));
    EXPECT_EQ(saved(), "one\r\ntwo\r\n");
    EXPECT_TRUE(find<QLabel>("hint")->text().contains(u"Line ends mended"_s));
}

TEST_F(EditorTest, ordinaryLineEndsAreNotTalkedAbout)
{
    edit("one\r\ntwo\r\n");
    EXPECT_FALSE(find<QLabel>("lineEnds")->isVisible());
}

TEST_F(EditorTest, thePanelSaysWhichFileItShows)
{
    edit("one\r\n");
    EXPECT_EQ(find<QLabel>("file")->text(), u"main.wf"_s);
    ui.window()->editPanel().openDotScript(u"app"_s, u"one"_s);
    EXPECT_EQ(find<QLabel>("file")->text(), u".main.wf, a copy that is not run"_s);
    EXPECT_FALSE(find("run")->isVisible());
}

TEST_F(EditorTest, anEmptyScriptIsOfferedAFirstLine)
{
    edit("");
    EXPECT_TRUE(find<QLabel>("file")->text().contains(u"Begin with a line"_s));
    Q_EMIT find<QLabel>("file")->linkActivated(u"guide"_s);
    type(find("Text4"), u"Counts"_s);
    EXPECT_EQ(find<ScriptEditor>("Text4")->script(), u"//guide:Counts\r\n"_s);
    EXPECT_FALSE(find<QLabel>("file")->text().contains(u"Begin"_s));
}

TEST_F(EditorTest, runSavesWhatIsShownAndRunsIt)
{
    edit("note.down \"old\"\r\n");
    find<ScriptEditor>("Text4")->selectAll();
    type(find("Text4"), u"note.down \"new\""_s);
    click(find("run"));
    EXPECT_EQ(saved(), "note.down \"new\"\r\n");
    EXPECT_EQ(said(), QStringList(u"note new"_s));
}

TEST_F(EditorTest, runOfAnUnchangedScriptStaysInTheEditor)
{
    edit("note.down \"old\"\r\n");
    click(find("run"));
    EXPECT_TRUE(isEditing());
    EXPECT_TRUE(user.seen.isEmpty());
    EXPECT_EQ(said(), QStringList(u"note old"_s));
}

TEST_F(EditorTest, anAppThatCannotBeSavedIsNotRun)
{
    start();
    ui.window()->editPanel().openForAdding();
    ui.window()->showEditPanel();
    type(find("Text4"), u"note.down \"x\""_s);
    click(find("run"));
    EXPECT_EQ(user.seen, QStringList(u"!Keyword is required"_s));
    EXPECT_TRUE(isEditing());
    EXPECT_TRUE(said().isEmpty());
}

} // namespace plum
