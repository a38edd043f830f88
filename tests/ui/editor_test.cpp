#include "ui/editor_fixture.h"

#include "ui/editing/edit_panel.h"
#include "ui/editing/script_editor.h"

#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;

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

TEST_F(EditorTest, aScriptOfAnotherPlaceIsEditedThere)
{
    const QString file = folder.path() + u"/elsewhere/a b.wf"_s;
    recording::writeBytes(file, "one\r\ntwo");
    start();
    user.caption = u"Edit"_s;
    ui.openScript(file, [] { ADD_FAILURE() << "it was run"; });
    EXPECT_EQ(user.seen, QStringList(u"!Run or edit \"a b.wf\"?"_s));
    ASSERT_TRUE(isEditing());
    EXPECT_EQ(find<QLabel>("file")->text(), file);
    EXPECT_FALSE(find("run")->isVisible());
    type(find("Text4"), u"x"_s);
    click(find("Image5"));
    EXPECT_EQ(user.seen.last(), u"!Successfully"_s);
    EXPECT_EQ(bytesOf(file), "xone\r\ntwo");
    EXPECT_FALSE(isEditing());
}

TEST_F(EditorTest, aScriptOfTheLibraryIsEditedAsItsApp)
{
    folder.addApp(u"app"_s, "one\r\n");
    start();
    user.caption = u"Edit"_s;
    ui.openScript(folder.script(u"app"_s), [] { ADD_FAILURE() << "it was run"; });
    ASSERT_TRUE(isEditing());
    EXPECT_EQ(find<QLineEdit>("Text7")->text(), u"app"_s);
    EXPECT_TRUE(find("run")->isVisible());
}

TEST_F(EditorTest, aScriptThatIsOpenedRunsOnlyWhenThatIsChosen)
{
    const QString file = folder.path() + u"/a.wf"_s;
    recording::writeBytes(file, "one");
    start();
    int runs = 0;
    user.answer = QMessageBox::Cancel;
    ui.openScript(file, [&] { ++runs; });
    EXPECT_EQ(runs, 0);
    user.caption = u"Run"_s;
    ui.openScript(file, [&] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_FALSE(isEditing());
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
