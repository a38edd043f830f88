#include "ui/launcher_bench.h"

#include "ui/edit_panel.h"
#include "ui/keyword_list.h"
#include "ui/script_editor.h"

#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStackedLayout>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

class FrmSetTest : public testing::Test, protected recording::LauncherBench
{
protected:
    QStringList listed(const char *name)
    {
        const auto *model = find<KeywordList>(name)->model();
        QStringList items;
        for (int row = 0; row < model->rowCount(); ++row)
            items += model->index(row, 0).data().toString();
        return items;
    }

    bool inFront(const char *name) { return find(name)->isVisible(); }

    QWidget *text8() { return find("Text8"); }
    QString typed() { return find<QLineEdit>("Text8")->text(); }
    bool keywordBoxHasFocus() { return text8()->hasFocus(); }
    QWidget *viewport(const char *name) { return find<QAbstractScrollArea>(name)->viewport(); }
    QPoint rowCentre(const char *name, int row)
    {
        auto *list = find<KeywordList>(name);
        return list->visualRect(list->model()->index(row, 0)).center();
    }

    // Opens the edit panel for an app of `List`, as a user does through the list menu.
    void rightClick(const char *name, int row)
    {
        QApplication::processEvents();
        click(viewport(name), Qt::RightButton, rowCentre(name, row));
    }

    QAction *listAction(const char *name)
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == u"list2you")
                return widget->findChild<QAction *>(QLatin1StringView(name));
        }
        return nullptr;
    }
};

} // namespace

TEST_F(FrmSetTest, startShowsTheAppsInTheirOrderInTheMiddleOfTheScreen)
{
    addApps({u"zoo"_s, u"ant"_s});
    start();
    EXPECT_TRUE(ui.window()->isVisible());
    EXPECT_EQ(listed("List"), QStringList({u"zoo"_s, u"ant"_s}));
    EXPECT_EQ(ui.window()->size(), find("okbox")->size());
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_EQ(ui.window()->pos(),
        screen.topLeft()
            + QPoint(
                (screen.width() - ui.window()->width()) / 2, (screen.height() - ui.window()->height()) / 2));
    EXPECT_TRUE(ui.window()->windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(state.runctx[1], u"bao"_s);
}

TEST_F(FrmSetTest, startWithoutAConfigFolderIsEmptyAndRegistersNothing)
{
    ui.start();
    EXPECT_TRUE(listed("List").isEmpty());
    EXPECT_FALSE(platform.log.lines().join(u'\n').contains(u"hotkey register"_s));
    EXPECT_FALSE(QFile::exists(folder.path() + u"/config"_s));
    EXPECT_TRUE(find<QLabel>("hint")->isVisible());
}

TEST_F(FrmSetTest, startRegistersTheSavedHotkey)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Ctrl+Q\r\n");
    ui.start();
    EXPECT_TRUE(platform.log.lines().contains(u"hotkey register 2 81"_s));
    EXPECT_FALSE(find<QLabel>("hint")->isVisible());
}

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
    EXPECT_TRUE(topLevel("list2you"));

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
    EXPECT_EQ(bytesOf(folder.apps(u"note/.main.wf"_s)), "first\r\nsecond");
    EXPECT_EQ(bytesOf(folder.script(u"note"_s)), "note.down \"note\"\r\n");
}

TEST_F(FrmSetTest, aPackageDroppedOnAListIsInstalled)
{
    addApps({u"one"_s});
    start();
    drop(viewport("List"), {QUrl::fromLocalFile(u"/tmp/calc.wfp"_s)});
    EXPECT_EQ(user.seen, QStringList(u"!Successfully"_s));
    EXPECT_EQ(listed("List"), QStringList({u"calc"_s, u"one"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "calc\r\none\r\n");
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
    drop(viewport("List"), {QUrl::fromLocalFile(u"/tmp/calc.wfp"_s)});
    ASSERT_TRUE(topLevel("shurubox"));
    EXPECT_TRUE(inBox("renamebox")->isVisible());

    click(inBox("Image2"));
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"calc  already exists"_s);
    inBox<QLineEdit>("Text4")->setText(u"CALC2"_s);
    click(inBox("Image2"));
    EXPECT_FALSE(topLevel("shurubox"));
    EXPECT_EQ(said(), QStringList(u"extract /tmp/calc.wfp|"_s + folder.path() + u"/config/apps/CALC2"_s));
    EXPECT_EQ(listed("List"), QStringList({u"CALC2"_s, u"calc"_s}));
}

TEST_F(FrmSetTest, aDroppedPackageCanReplaceTheExistingApp)
{
    addApps({u"calc"_s});
    start();
    drop(viewport("List"), {QUrl::fromLocalFile(u"/tmp/calc.wfp"_s)});
    click(inBox("Label3"));
    EXPECT_EQ(said(), QStringList(u"extract /tmp/calc.wfp|"_s + folder.path() + u"/config/apps/calc"_s));
    EXPECT_EQ(listed("List"), QStringList(u"calc"_s));
}

TEST_F(FrmSetTest, filesDroppedOnTheEditorAddALineEach)
{
    const QString text = QDir::toNativeSeparators(u"/tmp/a.txt"_s);
    platform.shell().shortcuts.insert(QDir::toNativeSeparators(u"/tmp/b.lnk"_s), u"C:\\b.exe"_s);
    addApps({u"note"_s});
    start();
    rightClick("List", 0);
    listAction("editok")->trigger();
    QList<QUrl> urls{QUrl::fromLocalFile(u"/tmp/a.txt"_s), QUrl::fromLocalFile(u"/tmp/b.lnk"_s)};
    drop(viewport("Text4"), urls);
    EXPECT_EQ(find<ScriptEditor>("Text4")->script(),
        u"note.down \"note\"\r\n%1\r\nC:\\b.exe\r\n"_s.arg(text));
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

TEST_F(FrmSetTest, anAppFromTheStoreIsListedOnceAndSaved)
{
    addApps({u"one"_s});
    start();
    ui.addInstalledApp(u"new"_s);
    ui.addInstalledApp(u"one"_s);
    EXPECT_EQ(listed("List"), QStringList({u"one"_s, u"new"_s}));
    EXPECT_EQ(listed("List2"), QStringList({u"new"_s, u"one"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "one\r\nnew\r\n");
}

TEST_F(FrmSetTest, theMenuPicturesOpenTheSettingsMenu)
{
    start();
    click(find("Image6"));
    ASSERT_TRUE(topLevel("mmmm"));
    topLevel("mmmm")->hide();
    ui.window()->showEditPanel();
    click(find("Image8"));
    EXPECT_TRUE(topLevel("mmmm"));
}

TEST_F(FrmSetTest, exitGivesBackTrayIconAndHotkeyAndEnds)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    start();
    click(find("Image7"));
    EXPECT_EQ(said(), QStringList({u"hotkey unregister"_s, u"end process 0"_s}));
    EXPECT_FALSE(ui.window()->isVisible());
}

TEST_F(FrmSetTest, closingTheWindowGoesThroughTheExitRoutine)
{
    start();
    ui.window()->close();
    EXPECT_EQ(said(), QStringList(u"end process 0"_s));
}

TEST_F(FrmSetTest, backLeadsToTheMainPanel)
{
    start();
    for (const auto &[show, picture] :
        {std::pair(&frmSet::showEditPanel, "Image9"), std::pair(&frmSet::showRenamePanel, "Image11")}) {
        (ui.window()->*show)();
        EXPECT_FALSE(find("okbox")->isVisible());
        EXPECT_NE(ui.window()->size(), find("okbox")->size());
        click(find(picture));
        EXPECT_TRUE(find("okbox")->isVisible());
        EXPECT_FALSE(find("addeditbox")->isVisible());
        EXPECT_FALSE(find("editnamebox")->isVisible());
        EXPECT_EQ(ui.window()->size(), find("okbox")->size());
        EXPECT_TRUE(keywordBoxHasFocus());
    }
}

TEST_F(FrmSetTest, theHotkeyPictureShowsTheHotkeyWindow)
{
    start();
    click(find("menuimg"));
    EXPECT_TRUE(topLevel("hotkey"));
}

TEST_F(FrmSetTest, theStorePictureOpensTheCatalogue)
{
    start();
    click(find("store"));
    EXPECT_EQ(said(), QStringList(u"store catalogue"_s));
}

TEST_F(FrmSetTest, aPressOnTheMainPanelFocusesTheKeywordBox)
{
    addApps({u"one"_s});
    start();
    key(text8(), Qt::Key_Down);
    EXPECT_FALSE(keywordBoxHasFocus());
    click(find("okbox"));
    EXPECT_TRUE(keywordBoxHasFocus());
}

TEST_F(FrmSetTest, draggingATitleOrPanelMovesTheWindow)
{
    start();
    for (const char *handle : {"title", "okbox"}) {
        const QPoint before = ui.window()->pos();
        QWidget *grip = find(handle);
        mouse(grip, QEvent::MouseButtonPress, {4, 4}, Qt::LeftButton, Qt::LeftButton);
        mouse(grip, QEvent::MouseMove, {34, 24}, Qt::NoButton, Qt::LeftButton);
        mouse(grip, QEvent::MouseButtonRelease, {4, 4}, Qt::LeftButton);
        EXPECT_EQ(ui.window()->pos() - before, QPoint(30, 20)) << handle;
    }
}

TEST_F(FrmSetTest, activationFocusesTheKeywordBox)
{
    addApps({u"one"_s});
    start();
    QApplication::processEvents();
    key(text8(), Qt::Key_Down);
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    ui.window()->activateWindow();
    QApplication::processEvents();
    EXPECT_TRUE(keywordBoxHasFocus());
}

TEST_F(FrmSetTest, aRefusedSaveKeepsThePanelOpen)
{
    start();
    ui.window()->editPanel().openForAdding();
    ui.window()->showEditPanel();
    type(find("Text4"), u"abc"_s);
    click(find("Image5"));
    EXPECT_EQ(user.seen, QStringList(u"!Keyword is required"_s));
    EXPECT_TRUE(find("addeditbox")->isVisible());
    EXPECT_EQ(find<ScriptEditor>("Text4")->script(), u"abc"_s);
}

TEST_F(FrmSetTest, theEditorKeepsItsLinesAndBlanks)
{
    start();
    auto *editor = find<ScriptEditor>("Text4");
    for (const QString &script :
        {u"a\r\nb"_s, u"a\r\n\r\nb\r\n"_s, u"no\u00a0break\ttab \u4f60"_s, QString()}) {
        editor->setScript(script);
        EXPECT_EQ(editor->script(), script);
    }
    editor->setScript(u"a\nb"_s);
    EXPECT_EQ(editor->script(), u"a\r\nb"_s);
}

TEST_F(FrmSetTest, aRunTimeErrorOfAnAppIsFatal)
{
    folder.addApp(u"bad"_s, "note.down \"1\"\r\ninput.enter_9 \"|\",\"x\"\r\n");
    start();
    type(text8(), u"bad"_s);
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(user.seen, QStringList({u"6"_s, u"!Run-time error '9':\n\nSubscript out of range"_s}));
    EXPECT_EQ(said(),
        QStringList(
            {u"note 1"_s, u"stderr Run-time error '9': Subscript out of range"_s, u"end process 1"_s}));
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
