#include "ui/frm_set_fixture.h"

#include "ui/editing/edit_panel.h"
#include "ui/editing/script_editor.h"

#include <QLabel>
#include <QRegularExpression>
#include <QWindow>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

TEST_F(FrmSetTest, startShowsTheAppsInTheirOrderInTheMiddleOfTheScreen)
{
    addApps({u"zoo"_s, u"ant"_s});
    start();
    EXPECT_TRUE(ui.window()->isVisible());
    EXPECT_EQ(listed("List"), QStringList({u"zoo"_s, u"ant"_s}));
    EXPECT_EQ(ui.window()->size(), find("okbox")->size());
    EXPECT_TRUE(isCentred());
    EXPECT_TRUE(ui.window()->windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(state.runctx[1], u"bao"_s);
}

TEST_F(FrmSetTest, startWithoutAConfigFolderIsEmptyAndRegistersNothing)
{
    startUi();
    EXPECT_TRUE(listed("List").isEmpty());
    EXPECT_FALSE(platform.log.lines().join(u'\n').contains(u"hotkey register"_s));
    EXPECT_FALSE(QFile::exists(folder.path() + u"/config"_s));
    EXPECT_TRUE(find<QLabel>("hint")->isVisible());
}

TEST_F(FrmSetTest, startRegistersTheSavedHotkey)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Ctrl+Q\r\n");
    startUi();
    EXPECT_TRUE(platform.log.lines().contains(u"hotkey register 2 81"_s));
    EXPECT_FALSE(find<QLabel>("hint")->isVisible());
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

TEST_F(FrmSetTest, anAppFromTheStoreDuringAScriptStartIsAddedToTheSavedOrder)
{
    addApps({u"two"_s, u"one"_s});
    ui.addInstalledApp(u"new"_s);
    ui.addInstalledApp(u"one"_s);
    EXPECT_EQ(bytesOf(folder.configTxt()), "two\r\none\r\nnew\r\n");
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

TEST_F(FrmSetTest, openingAMenuBringsTheWindowToTheForeground)
{
    addApps({u"one"_s});
    start();
    QWidget other;
    QObject context;
    QList<QWindow *> focused; // the menu takes the focus after the launcher has it
    QObject::connect(
        qApp, &QGuiApplication::focusWindowChanged, &context, [&](QWindow *window) { focused += window; });
    const auto bringsForward = [&](const std::function<void()> &action, const char *menu) {
        other.show();
        other.activateWindow();
        EXPECT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == other.windowHandle(); }));
        focused.clear();
        action();
        EXPECT_TRUE(waitUntil([&] { return focused.contains(ui.window()->windowHandle()); })) << menu;
        topLevel(menu)->hide();
    };

    bringsForward([this] { click(find("Image6")); }, "mmmm");
    bringsForward([this] { rightClick("List", 0); }, "list2you");
    ui.window()->showEditPanel();
    bringsForward([this] { click(find("Image8")); }, "mmmm");
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
    type(text8(), u"ab"_s);
    for (const auto &[show, panel, picture] : {std::tuple(&frmSet::showEditPanel, "addeditbox", "Image9"),
             std::tuple(&frmSet::showRenamePanel, "editnamebox", "Image11")}) {
        find<QLineEdit>("Text8")->setCursorPosition(0);
        (ui.window()->*show)();
        EXPECT_FALSE(find("okbox")->isVisible());
        EXPECT_EQ(ui.window()->size(), find(panel)->size());
        EXPECT_TRUE(isCentred()) << panel;
        click(find(picture));
        EXPECT_TRUE(find("okbox")->isVisible());
        EXPECT_FALSE(find("addeditbox")->isVisible());
        EXPECT_FALSE(find("editnamebox")->isVisible());
        EXPECT_EQ(ui.window()->size(), find("okbox")->size());
        EXPECT_TRUE(isCentred()) << picture;
        EXPECT_TRUE(keywordBoxHasFocus());
        EXPECT_EQ(find<QLineEdit>("Text8")->cursorPosition(), 2);
    }
}

TEST_F(FrmSetTest, theHotkeyPictureShowsTheHotkeyWindow)
{
    start();
    click(find("menuimg"));
    ASSERT_TRUE(topLevel("hotkey"));
    EXPECT_EQ(topLevel("hotkey")->parentWidget(), ui.window());
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
    for (const auto &[show, handle] : {std::pair(&frmSet::showMainPanel, "title"),
             std::pair(&frmSet::showMainPanel, "okbox"), std::pair(&frmSet::showEditPanel, "addeditbox"),
             std::pair(&frmSet::showRenamePanel, "editnamebox")}) {
        (ui.window()->*show)();
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
    const QString line = u"input.enter_9 \"|\",\"x\""_s;
    EXPECT_EQ(user.seen,
        QStringList({u"6"_s,
            u"!Run-time error '9':\n\nSubscript out of range: there is no piece 9\n\nbad, line 2:\n"_s
                + line}));
    // On a slow machine the launcher asks for the keyboard meanwhile.
    EXPECT_EQ(said().filter(QRegularExpression(u"^(note|stderr|end process) "_s)),
        QStringList({u"note 1"_s,
            u"stderr Run-time error '9': Subscript out of range: there is no piece 9 (bad, line 2: "_s + line
                + u')',
            u"end process 1"_s}));
}

TEST_F(FrmSetTest, anotherStartBringsTheHiddenLauncherForward)
{
    start();
    ui.window()->hide();
    ui.fetch();
    EXPECT_TRUE(waitUntil([this] { return ui.window()->isVisible() && keywordBoxHasFocus(); }));
}

TEST_F(FrmSetTest, anAppThatHidesALauncherWhichNothingBringsBackIsFollowedByHow)
{
    folder.addApp(u"go"_s, "me.hide\r\nnote.down \"on\"\r\n");
    start();
    for (int time = 0; time < 2; ++time) {
        type(text8(), time == 0 ? u"go"_s : QString());
        key(text8(), Qt::Key_Return);
    }
    const QStringList lines = said();
    EXPECT_EQ(lines.size(), 3);
    EXPECT_EQ(lines.value(0), u"note on"_s);
    EXPECT_TRUE(lines.value(1).startsWith(u"stderr Plum is hidden. Start it again"_s));
    EXPECT_EQ(lines.value(2), u"note on"_s);
    QWidget *note = topLevel("passingnote");
    ASSERT_TRUE(note);
    EXPECT_TRUE(note->windowFlags() & Qt::WindowDoesNotAcceptFocus);
    note->close();
}

TEST_F(FrmSetTest, aLauncherWithAHotkeyIsHiddenWithoutAWord)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    start();
    ui.hideLauncher();
    EXPECT_TRUE(said().isEmpty());
    EXPECT_FALSE(topLevel("passingnote"));
}

TEST_F(FrmSetTest, aTakenHotkeyIsSaidAtTheStartAndTakenWhenItIsFree)
{
    platform.hotkey().succeeds = false;
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    start();
    EXPECT_TRUE(find<QLabel>("hint")->text().startsWith(u"Alt+Z belongs to another program"_s));
    EXPECT_TRUE(waitUntil([this] {
        const auto *hint = find<QLabel>("hint");
        return hint->hasHeightForWidth() && hint->height() >= hint->heightForWidth(hint->width());
    })) << "the words do not fit";
    platform.hotkey().succeeds = true;
    ASSERT_TRUE(waitUntil([this] { return !find<QLabel>("hint")->isVisible(); }));
    EXPECT_EQ(said().last(), u"hotkey register 1 90"_s);
}

TEST_F(FrmSetTest, beyondTwoHundredNestedRunsAnotherOneIsRefusedInWords)
{
    addApps({u"deep"_s});
    start();
    type(text8(), u"deep"_s);
    int presses = 0;
    waiter.onWait = [&] {
        if (presses++ < 250)
            key(text8(), Qt::Key_Return);
    };
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said().count(u"note deep"_s), 200);
    EXPECT_TRUE(find<QLabel>("hint")->text().startsWith(u"Not started"_s));
}

} // namespace plum
