#include "ui/frm_set_fixture.h"

#include "ui/editing/script_editor.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

TEST_F(FrmSetTest, typingListsTheKeywordsThatHoldTheText)
{
    addApps({u"notes"_s, u"piano"_s, u"NOTE"_s});
    start();
    type(text8(), u"no"_s);
    EXPECT_EQ(listed("List2"), QStringList({u"notes"_s, u"piano"_s}));
    EXPECT_TRUE(inFront("List2"));
    EXPECT_FALSE(inFront("List"));
    EXPECT_TRUE(keywordBoxHasFocus());
}

TEST_F(FrmSetTest, aBlankAndArgumentsDoNotChangeTheResults)
{
    addApps({u"mail"_s, u"a b"_s});
    start();
    type(text8(), u"mail Ann,Bob"_s);
    EXPECT_EQ(typed(), u"mail Ann,Bob"_s);
    EXPECT_EQ(listed("List2"), QStringList(u"mail"_s));
}

TEST_F(FrmSetTest, enterRunsTheFirstResult)
{
    addApps({u"piano"_s, u"notes"_s});
    start();
    state.runctx[0] = u"before"_s;
    type(text8(), u"no"_s);
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note piano"_s));
    EXPECT_EQ(state.currentKeyword, u"piano"_s);
    EXPECT_EQ(state.runctx[0], u"before"_s);
}

TEST_F(FrmSetTest, enterWithoutResultsRunsNothing)
{
    addApps({u"notes"_s});
    start();
    key(text8(), Qt::Key_Return);
    type(text8(), u"x"_s);
    key(text8(), Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(FrmSetTest, enterInTheKeywordBoxRunsNothingWhileAResultIsSelected)
{
    addApps({u"notes"_s});
    start();
    type(text8(), u"n"_s);
    key(text8(), Qt::Key_Down);
    key(find("List2"), Qt::Key_Left);
    EXPECT_TRUE(keywordBoxHasFocus());
    key(text8(), Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(FrmSetTest, typingOnForgetsTheSelectedResult)
{
    addApps({u"notes"_s, u"no"_s});
    start();
    type(text8(), u"n"_s);
    key(text8(), Qt::Key_Down);
    key(find("List2"), Qt::Key_Left);
    type(text8(), u"o"_s);
    EXPECT_EQ(find<KeywordList>("List2")->text(), QString());
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note notes"_s));
}

TEST_F(FrmSetTest, aKeywordThatIsListedTwiceIsFoundTwice)
{
    writeBytes(folder.configTxt(), "b\r\nab\r\nb\r\nB\r\n");
    start();
    type(text8(), u"b"_s);
    EXPECT_EQ(listed("List2"), QStringList({u"b"_s, u"ab"_s, u"b"_s}));
    key(text8(), Qt::Key_Backspace);
    EXPECT_EQ(listed("List2"), listed("List"));
    EXPECT_TRUE(inFront("List2"));
}

TEST_F(FrmSetTest, downIntoAListWithoutItemsSelectsNothing)
{
    start();
    for (const QString &letters : {u""_s, u"x"_s}) {
        type(text8(), letters);
        key(text8(), Qt::Key_Down);
        QWidget *list = find(letters.isEmpty() ? "List" : "List2");
        EXPECT_TRUE(list->hasFocus());
        key(list, Qt::Key_Return);
        EXPECT_TRUE(said().isEmpty());
        key(list, Qt::Key_Left);
        EXPECT_TRUE(keywordBoxHasFocus());
    }
}

TEST_F(FrmSetTest, downWithTextEntersTheResults)
{
    addApps({u"a1"_s, u"b1"_s, u"b2"_s});
    start();
    type(text8(), u"b"_s);
    key(text8(), Qt::Key_Down);
    EXPECT_TRUE(find("List2")->hasFocus());
    EXPECT_EQ(find<KeywordList>("List2")->text(), u"b1"_s);
    EXPECT_TRUE(inFront("List2"));
}

TEST_F(FrmSetTest, downWithoutTextEntersAllApps)
{
    addApps({u"a1"_s, u"b1"_s});
    start();
    type(text8(), u"b"_s);
    key(text8(), Qt::Key_Backspace);
    key(text8(), Qt::Key_Down);
    EXPECT_TRUE(find("List")->hasFocus());
    EXPECT_EQ(find<KeywordList>("List")->text(), u"a1"_s);
    EXPECT_TRUE(inFront("List"));
}

TEST_F(FrmSetTest, leftInAListLeadsBackToTheKeywordBox)
{
    addApps({u"notes"_s});
    start();
    for (const char *list : {"List", "List2"}) {
        type(text8(), u"no"_s);
        key(find(list), Qt::Key_Left);
        EXPECT_TRUE(keywordBoxHasFocus());
        EXPECT_EQ(find<QLineEdit>("Text8")->cursorPosition(), typed().size());
        EXPECT_TRUE(inFront("List"));
    }
}

TEST_F(FrmSetTest, enterInListRunsTheSelectedAppAndRemembersItsPath)
{
    addApps({u"one"_s, u"two"_s});
    start();
    key(text8(), Qt::Key_Down);
    key(find("List"), Qt::Key_Down);
    key(find("List"), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note two"_s));
    EXPECT_EQ(state.runctx[0], folder.path() + u"\\config\\apps\\two\\main.wf"_s);
}

TEST_F(FrmSetTest, enterInList2RunsTheSelectedAppAndKeepsThePath)
{
    addApps({u"one"_s, u"two"_s});
    start();
    state.runctx[0] = u"before"_s;
    type(text8(), u"tw"_s);
    key(text8(), Qt::Key_Down);
    key(find("List2"), Qt::Key_Enter);
    EXPECT_EQ(said(), QStringList(u"note two"_s));
    EXPECT_EQ(state.runctx[0], u"before"_s);
}

TEST_F(FrmSetTest, enterInAListWithoutSelectionRunsNothing)
{
    addApps({u"one"_s});
    start();
    key(find("List"), Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(FrmSetTest, aListedTextThatIsNoFolderNameIsNotRun)
{
    addApps({u"one"_s}); // the folder of apps exists, so that the way out of it does
    const QString outside = u"../../outside"_s;
    writeBytes(folder.path() + u"/outside/main.wf"_s, "note.down \"outside\"\r\n");
    writeBytes(folder.configTxt(), configText({outside}).toUtf8());
    start();
    state.currentKeyword = u"before"_s;
    key(text8(), Qt::Key_Down);
    EXPECT_EQ(find<KeywordList>("List")->text(), outside);
    key(find("List"), Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(state.currentKeyword, u"before"_s);
}

TEST_F(FrmSetTest, runningAnAppWithoutFolderRunsNoLine)
{
    writeBytes(folder.configTxt(), "gone\r\n..\\..\\x\r\n");
    start();
    key(text8(), Qt::Key_Down);
    key(find("List"), Qt::Key_Return);
    key(find("List"), Qt::Key_Down);
    key(find("List"), Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
    EXPECT_TRUE(state.runlist.isEmpty());
}

TEST_F(FrmSetTest, rightReleaseSelectsTheItemAndOpensTheListMenu)
{
    addApps({u"one"_s, u"two"_s});
    start();
    rightClick("List", 1);
    EXPECT_EQ(find<KeywordList>("List")->text(), u"two"_s);
    EXPECT_EQ(ui.window()->selectedKeyword(), u"two"_s);
    ASSERT_TRUE(topLevel("list2you"));
    EXPECT_EQ(topLevel("list2you")->pos(), viewport("List")->mapToGlobal(rowCentre("List", 1)));

    type(text8(), u"on"_s);
    rightClick("List2", 0);
    EXPECT_EQ(ui.window()->selectedKeyword(), u"one"_s);
}

TEST_F(FrmSetTest, doubleClickOnAResultOpensItsSecondScript)
{
    addApps({u"note"_s});
    writeBytes(folder.apps(u"note/.main.wf"_s), "first\r\nsecond\r\n");
    start();
    type(text8(), u"n"_s);
    QApplication::processEvents();
    mouse(viewport("List2"), QEvent::MouseButtonDblClick, rowCentre("List2", 0), Qt::LeftButton,
        Qt::LeftButton);
    EXPECT_TRUE(find("addeditbox")->isVisible());
    EXPECT_EQ(find<QLabel>("Label5")->text(), u"\"note\"  is editting"_s);
    EXPECT_EQ(find<QLineEdit>("Text7")->text(), u"note"_s);
    EXPECT_EQ(find<ScriptEditor>("Text4")->script(), u"first\r\nsecond"_s);
    EXPECT_EQ(find("Image9")->toolTip(), u"Hide"_s);
    EXPECT_EQ(state.runctx[0], folder.path() + u"\\config\\apps\\note\\.main.wf"_s);

    click(find("Image5"));
    EXPECT_EQ(bytesOf(folder.apps(u"note/.main.wf"_s)), "first\r\nsecond\r\n");
    EXPECT_EQ(bytesOf(folder.script(u"note"_s)), "note.down \"note\"\r\n");
}

TEST_F(FrmSetTest, doubleClickAmongAllAppsOpensNothing)
{
    addApps({u"note"_s});
    start();
    QApplication::processEvents();
    mouse(
        viewport("List"), QEvent::MouseButtonDblClick, rowCentre("List", 0), Qt::LeftButton, Qt::LeftButton);
    EXPECT_TRUE(find("okbox")->isVisible());
    EXPECT_EQ(state.runctx[0], QString());
}

TEST_F(FrmSetTest, aPackageDroppedOnAListIsInstalled)
{
    addApps({u"one"_s});
    start();
    dropPackage(u"calc.wfp"_s);
    EXPECT_EQ(user.seen, QStringList(u"!Successfully"_s));
    EXPECT_EQ(listed("List"), QStringList({u"calc"_s, u"one"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "calc\r\none\r\n");
}

TEST_F(FrmSetTest, aDroppedPackageIsInstalledOnlyWhenTheUserAgrees)
{
    agreesToInstall = false;
    start();
    dropPackage(u"calc.wfp"_s);
    EXPECT_EQ(said(), QStringList(u"asks to install calc"_s));
    EXPECT_TRUE(user.seen.isEmpty());
    EXPECT_TRUE(folder.inApps().isEmpty());
}

TEST_F(FrmSetTest, otherDropsOnAListDoNothing)
{
    start();
    drop(viewport("List"), {QUrl(u"https://example.org/x.wfp"_s)});
    drop(viewport("List"), {QUrl::fromLocalFile(u"/tmp"_s)});
    EXPECT_TRUE(said().isEmpty());
    EXPECT_TRUE(user.seen.isEmpty());
}

TEST_F(FrmSetTest, aDroppedPackageOfAnExistingAppAsksForAName)
{
    addApps({u"calc"_s});
    start();
    dropPackage(u"calc.wfp"_s);
    ASSERT_TRUE(topLevel("shurubox"));
    EXPECT_TRUE(inBox("renamebox")->isVisible());

    click(inBox("Image2"));
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"calc  already exists"_s);
    inBox<QLineEdit>("Text4")->setText(u"CALC2"_s);
    click(inBox("Image2"));
    EXPECT_FALSE(topLevel("shurubox"));
    EXPECT_EQ(bytesOf(folder.script(u"CALC2"_s)), "new");
    EXPECT_EQ(said(), QStringList(u"asks to install CALC2"_s));
    EXPECT_EQ(listed("List"), QStringList({u"CALC2"_s, u"calc"_s}));
}

TEST_F(FrmSetTest, aDroppedPackageCanReplaceTheExistingApp)
{
    addApps({u"calc"_s});
    start();
    dropPackage(u"calc.wfp"_s);
    click(inBox("Label3"));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "new");
    EXPECT_EQ(said(), QStringList({u"asks to install calc in place"_s, u"trash calc"_s}));
    EXPECT_EQ(listed("List"), QStringList(u"calc"_s));
}

TEST_F(FrmSetTest, filesDroppedOnTheEditorAddALineEach)
{
    const QString dropped = QDir::toNativeSeparators(u"/tmp/a.txt"_s);
    platform.shell().shortcuts.insert(QDir::toNativeSeparators(u"/tmp/b.lnk"_s), u"C:\\b.exe"_s);
    addApps({u"note"_s});
    start();
    rightClick("List", 0);
    listAction("editok")->trigger();
    QList<QUrl> urls{QUrl::fromLocalFile(u"/tmp/a.txt"_s), QUrl::fromLocalFile(u"/tmp/b.lnk"_s)};
    drop(viewport("Text4"), urls);
    EXPECT_EQ(
        find<ScriptEditor>("Text4")->script(), u"note.down \"note\"\r\n%1\r\nC:\\b.exe\r\n"_s.arg(dropped));
}

TEST_F(FrmSetTest, aThousandFilesDroppedOnTheEditorAddAThousandLines)
{
    start();
    ui.window()->showEditPanel();
    QList<QUrl> urls;
    for (int i = 0; i < 1000; ++i)
        urls += QUrl::fromLocalFile(u"/tmp/%1"_s.arg(i));
    drop(viewport("Text4"), urls);
    EXPECT_EQ(find<ScriptEditor>("Text4")->script().count(u"\r\n"_s), 1000);
}

TEST_F(FrmSetTest, aFileDroppedOnTheKeywordBoxBecomesTheDroppedFile)
{
    platform.shell().shortcuts.insert(QDir::toNativeSeparators(u"/tmp/x.lnk"_s), u"C:\\x.exe"_s);
    start();
    drop(text8(), {QUrl::fromLocalFile(u"/tmp/x.lnk"_s), QUrl::fromLocalFile(u"/tmp/y"_s)});
    EXPECT_EQ(state.droppedPath, u"C:\\x.exe"_s);
    drop(text8(), {QUrl::fromLocalFile(u"/tmp/plain.txt"_s)});
    EXPECT_EQ(state.droppedPath, QDir::toNativeSeparators(u"/tmp/plain.txt"_s));
    EXPECT_EQ(typed(), QString());
}

TEST_F(FrmSetTest, tenThousandAppsFilterWithEachKey)
{
    QStringList keywords;
    for (int i = 0; i < 10000; ++i)
        keywords += u"app%1"_s.arg(i);
    writeBytes(folder.configTxt(), configText(keywords).toUtf8());
    start();
    type(text8(), u"999"_s);
    EXPECT_EQ(listed("List2").size(), 19);
}

} // namespace plum
