#include "ui/launcher_bench.h"

#include "ui/editing/script_editor.h"
#include "ui/lists/keyword_list.h"
#include "ui/sett.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::packageOf;
using recording::writeBytes;

namespace {

class SettTest : public testing::Test, protected recording::LauncherBench
{
protected:
    static QMenu *menu(const char *name)
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1StringView(name))
                return qobject_cast<QMenu *>(widget);
        }
        return nullptr;
    }

    static void choose(const char *menuName, const char *item)
    {
        auto *action = menu(menuName)->findChild<QAction *>(QLatin1StringView(item));
        if (!action)
            qFatal("no %s in %s", item, menuName);
        action->trigger();
    }

    // Points at an app of `List` with the right mouse button.
    void select(int row)
    {
        QApplication::processEvents();
        auto *list = find<KeywordList>("List");
        click(list->viewport(), Qt::RightButton, list->visualRect(list->model()->index(row, 0)).center());
        menu("list2you")->hide();
    }

    QString text(const char *name) { return find<QLineEdit>(name)->text(); }
    QStringList listed()
    {
        return static_cast<QStringListModel *>(find<KeywordList>("List")->model())->stringList();
    }
};

} // namespace

TEST_F(SettTest, addnewOpensAnEmptyPanelThatCreatesAnApp)
{
    start();
    choose("mmmm", "addnew");
    EXPECT_TRUE(find("addeditbox")->isVisible());
    EXPECT_TRUE(find("Text7")->isEnabled());
    EXPECT_EQ(ui.window()->size(), find("addeditbox")->size());
    type(find("Text7"), u"hello"_s);
    type(find("Text4"), u"note.down 1"_s);
    click(find("Image5"));
    EXPECT_EQ(user.seen, QStringList(u"!Successfully"_s));
    EXPECT_EQ(bytesOf(folder.script(u"hello"_s)), "note.down 1");
    EXPECT_EQ(listed(), QStringList(u"hello"_s));
    EXPECT_TRUE(find("okbox")->isVisible());
}

TEST_F(SettTest, theFooterSaysHowFarADownloadIs)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    start();
    ui.news().showDownload(45);
    EXPECT_EQ(find<QLabel>("hint")->text(), u"Downloading, 45 %"_s);
    ui.news().showDownload({});
    EXPECT_FALSE(find("hint")->isVisible());
}

TEST_F(SettTest, lookAgainTakesInAFolderThatWasCopiedIn)
{
    folder.addApp(u"one"_s, "note.down 1\r\n");
    writeBytes(folder.configTxt(), "gone\r\none\r\n");
    start();
    folder.addApp(u"copied"_s, "note.down 2\r\n");
    choose("mmmm", "lookagain");
    EXPECT_EQ(listed(), QStringList({u"gone"_s, u"one"_s, u"copied"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "gone\r\none\r\ncopied\r\n");
    EXPECT_EQ(find<QLabel>("hint")->text(), u"Taken in: copied"_s);
    choose("mmmm", "lookagain");
    EXPECT_EQ(find<QLabel>("hint")->text(), u"Every app in the folder is in the list already."_s);
    EXPECT_EQ(listed().size(), 3);
}

TEST_F(SettTest, autostartIsASwitchThatShowsHowItIs)
{
    start();
    const auto *action = menu("mmmm")->findChild<QAction *>(u"autostart"_s);
    const auto isShownAsOn = [&] {
        Q_EMIT ui.window()->settingsMenuRequested({});
        menu("mmmm")->hide();
        return action->isChecked();
    };
    EXPECT_FALSE(isShownAsOn());
    choose("mmmm", "autostart");
    EXPECT_EQ(find<QLabel>("hint")->text(), u"Plum starts when you log in"_s);
    EXPECT_TRUE(isShownAsOn());
    choose("mmmm", "autostart");
    EXPECT_EQ(find<QLabel>("hint")->text(), u"Plum does not start when you log in"_s);
    EXPECT_FALSE(isShownAsOn());
    EXPECT_EQ(said(), QStringList({u"autostart on"_s, u"autostart off"_s}));
}

TEST_F(SettTest, anAutostartThatCannotBeSetIsSaid)
{
    platform.autostart().canBeSet = false;
    start();
    choose("mmmm", "autostart");
    EXPECT_EQ(find<QLabel>("hint")->text(), u"That could not be changed"_s);
    EXPECT_FALSE(platform.autostart().isOn());
}

TEST_F(SettTest, whatHappenedIsInBothMenus)
{
    start();
    for (const char *name : {"mmmm", "cd"}) {
        platform.log.clear();
        choose(name, "whathappened");
        EXPECT_EQ(said(), QStringList(u"shows what happened"_s)) << name;
    }
}

TEST_F(SettTest, addnewForgetsWhatWasTypedBefore)
{
    start();
    choose("mmmm", "addnew");
    type(find("Text7"), u"x"_s);
    type(find("Text4"), u"y"_s);
    user.answer = QMessageBox::Discard;
    click(find("Image9"));
    choose("mmmm", "addnew");
    EXPECT_EQ(text("Text7"), QString());
    EXPECT_EQ(find<ScriptEditor>("Text4")->script(), QString());
}

TEST_F(SettTest, theVersionBeforeIsOfferedAndComesBack)
{
    folder.addApp(u"mine"_s, "note.down 1");
    for (const QByteArray &version : {QByteArray("1"), QByteArray("2")}) {
        const QString package = folder.addPackage(u"calc.wfp"_s, packageOf({{u"main.wf"_s, version}}));
        ASSERT_TRUE(installer.install({.path = package,
                                          .keyword = u"calc"_s,
                                          .origin = PackageOrigin{.path = u"calc.wfp"_s,
                                              .version = QString::fromLatin1(version),
                                              .checksum = version.leftJustified(32, 'x')}},
            [](const QString &) {}));
    }
    start();
    const auto offered = [this](const QString &keyword) {
        select(static_cast<int>(listed().indexOf(keyword)));
        const auto *action = menu("list2you")->findChild<QAction *>(u"goBack"_s);
        return action->isVisible() ? action->text() : QString();
    };
    EXPECT_EQ(offered(u"mine"_s), QString());
    EXPECT_EQ(offered(u"calc"_s), u"Back to version 1"_s);
    choose("list2you", "goBack");
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "1");
    EXPECT_EQ(offered(u"calc"_s), u"Back to version 2"_s);
}

TEST_F(SettTest, theLineUnderTheListsOffersUpdates)
{
    start();
    platform.log.clear();
    ui.news().showUpdates(1);
    auto *hint = find<QLabel>("hint");
    EXPECT_TRUE(hint->text().contains(u"1 update<"_s)) << qPrintable(hint->text());
    ui.news().showUpdates(2);
    EXPECT_TRUE(hint->text().contains(u"2 updates<"_s));
    EXPECT_TRUE(hint->isVisible());
    Q_EMIT hint->linkActivated(u"updates"_s);
    EXPECT_EQ(platform.log.lines(), QStringList(u"store updates"_s));
    ui.news().showUpdates(0);
    EXPECT_FALSE(hint->text().contains(u"update"_s));
}

TEST_F(SettTest, fixitIsLeftOutWhereTheSystemRegistersNoComponents)
{
    start();
    EXPECT_EQ(menu("mmmm")->findChild<QAction *>(u"fixit"_s), nullptr);
}

TEST_F(SettTest, fixitRegistersTheDialogComponentSilently)
{
    platform.hasComponents = true;
    start();
    platform.log.clear();
    choose("mmmm", "fixit");
    EXPECT_EQ(platform.log.lines(),
        QStringList(u"open regsvr32|%1\\config\\settings\\fix\\COMDLG32.OCX /s|6"_s.arg(
            platform.paths().programFolder())));
}

TEST_F(SettTest, editokShowsTheScriptAndSavesIt)
{
    folder.addApp(u"a"_s, "one\r\ntwo\r\n");
    start();
    select(0);
    choose("list2you", "editok");
    EXPECT_EQ(text("Text7"), u"a"_s);
    EXPECT_FALSE(find("Text7")->isEnabled());
    EXPECT_EQ(find<ScriptEditor>("Text4")->script(), u"one\r\ntwo"_s);
    find<ScriptEditor>("Text4")->setScript(u"three\r\nfour"_s);
    click(find("Image5"));
    EXPECT_EQ(user.seen, QStringList(u"!Successfully"_s));
    EXPECT_EQ(bytesOf(folder.script(u"a"_s)), "three\r\nfour\r\n");
    EXPECT_TRUE(find("okbox")->isVisible());
}

TEST_F(SettTest, editnameRenamesTheSelectedApp)
{
    addApps({u"a"_s, u"b"_s});
    start();
    select(0);
    choose("list2you", "editname");
    EXPECT_TRUE(find("editnamebox")->isVisible());
    EXPECT_EQ(ui.window()->size(), find("editnamebox")->size());
    EXPECT_EQ(text("Text1"), u"a"_s);
    type(find("Text12"), u"b"_s);
    click(find("Image10"));
    EXPECT_EQ(user.seen, QStringList(u"!Keyword already exists"_s));
    EXPECT_TRUE(find("editnamebox")->isVisible());

    type(find("Text12"), u"c"_s);
    click(find("Image10"));
    EXPECT_EQ(user.seen.last(), u"!Successfully"_s);
    EXPECT_EQ(listed(), QStringList({u"bc"_s, u"b"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "bc\r\nb\r\n");
    EXPECT_TRUE(find("okbox")->isVisible());
}

TEST_F(SettTest, delthisAsksAndDeletesTheSelectedApp)
{
    addApps({u"a"_s, u"b"_s});
    start();
    select(1);
    user.answer = QMessageBox::No;
    choose("list2you", "delthis");
    EXPECT_EQ(listed(), QStringList({u"a"_s, u"b"_s}));
    user.answer = QMessageBox::Yes;
    choose("list2you", "delthis");
    EXPECT_EQ(user.seen, QStringList(2, u"!确定删除?"_s));
    EXPECT_EQ(user.titles, QStringList(2, u"提示"_s));
    EXPECT_EQ(listed(), QStringList(u"a"_s));
    EXPECT_FALSE(QFile::exists(folder.apps(u"b"_s)));
    EXPECT_TRUE(find("List")->isVisible());
}

TEST_F(SettTest, commandsWithoutASelectedAppDoNoDamage)
{
    addApps({u"a"_s});
    start();
    choose("list2you", "delthis");
    EXPECT_TRUE(user.seen.isEmpty());
    choose("list2you", "shuoming");
    EXPECT_EQ(user.seen, QStringList(u"!Guide does not exist"_s));
    choose("list2you", "openthisfold");
    EXPECT_EQ(said(), QStringList(u"open "_s + folder.path() + u"\\config\\apps\\||1"_s));
    choose("list2you", "editname");
    type(find("Text12"), u"x"_s);
    click(find("Image10"));
    EXPECT_EQ(QDir(folder.apps()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList(u"a"_s));
}

TEST_F(SettTest, shuomingShowsTheGuideText)
{
    folder.addApp(u"a"_s, "//guide:Types a date\r\n");
    start();
    select(0);
    choose("list2you", "shuoming");
    EXPECT_EQ(user.seen, QStringList(u"Types a date"_s));
}

TEST_F(SettTest, shuomingOpensTheGuideAddress)
{
    folder.addApp(u"a"_s, "//guide:https://example.org/a\r\n");
    start();
    select(0);
    choose("list2you", "shuoming");
    EXPECT_EQ(said(), QStringList(u"open https://example.org/a||1"_s));
}

TEST_F(SettTest, shuomingWithABlankBeforeGuideFindsNone)
{
    folder.addApp(u"a"_s, "// guide:text\r\n");
    start();
    select(0);
    choose("list2you", "shuoming");
    EXPECT_EQ(user.seen, QStringList(u"!Guide does not exist"_s));
}

TEST_F(SettTest, openthisfoldOpensTheSelectedFolder)
{
    addApps({u"a"_s});
    start();
    select(0);
    choose("list2you", "openthisfold");
    EXPECT_EQ(said(), QStringList(u"open "_s + folder.path() + u"\\config\\apps\\a\\||1"_s));
}

TEST_F(SettTest, xianshiAndYctpShowAndHideTheLauncher)
{
    start();
    choose("cd", "yctp");
    EXPECT_FALSE(ui.window()->isVisible());
    choose("cd", "xianshi");
    EXPECT_TRUE(ui.window()->isVisible());
}

TEST_F(SettTest, rjszShowsTheHotkeyWindow)
{
    start();
    choose("mmmm", "rjsz");
    EXPECT_TRUE(topLevel("hotkey"));
}

TEST_F(SettTest, theWebItemsOpenTheirPages)
{
    start();
    choose("mmmm", "about");
    choose("mmmm", "gfwz");
    choose("cd", "offs");
    choose("mmmm", "discuss");
    choose("mmmm", "funcstore");
    EXPECT_EQ(said(),
        QStringList({u"open http://site/plum/index.html?v=0.01||1"_s,
            u"open http://site/products/tarnwick_plum/index.html?v=0.01||1"_s,
            u"open http://site/products/tarnwick_plum/index.html?v=0.01||1"_s,
            u"open http://forum/topic/tarnwick_plum/||1"_s, u"open http://forum/topic/tarnwick_plum/||1"_s}));
}

TEST_F(SettTest, tuichuGoesThroughTheExitRoutine)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    start();
    choose("mmmm", "tuichu");
    EXPECT_FALSE(ui.window()->isVisible());
    EXPECT_EQ(said(), QStringList({u"hotkey unregister"_s, u"end process 0"_s}));
}

TEST_F(SettTest, guanbiEndsAtOnceWithTheLauncherAsItIs)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    start();
    choose("cd", "guanbi");
    EXPECT_TRUE(ui.window()->isVisible());
    EXPECT_EQ(said(), QStringList({u"hotkey unregister"_s, u"end process 0"_s}));
}

TEST_F(SettTest, leftAndRightReleaseOnTheTrayIconOpenTheSameMenu)
{
    for (const auto reason : {QSystemTrayIcon::Trigger, QSystemTrayIcon::Context}) {
        sett menus(false);
        menus.trayEvent(reason);
        EXPECT_TRUE(menus.cd.isVisible());
    }
}

TEST_F(SettTest, otherTrayEventsOpenNothing)
{
    sett menus(false);
    for (const auto reason :
        {QSystemTrayIcon::DoubleClick, QSystemTrayIcon::MiddleClick, QSystemTrayIcon::Unknown})
        menus.trayEvent(reason);
    EXPECT_FALSE(menus.cd.isVisible());
}

TEST_F(SettTest, everyItemHasACaptionAndNoneRegistersComponents)
{
    start();
    for (const char *name : {"cd", "mmmm", "list2you"}) {
        for (const QAction *action : menu(name)->actions()) {
            EXPECT_TRUE(action->isSeparator() || !action->text().isEmpty());
            EXPECT_NE(action->objectName(), u"fixit"_s);
        }
    }
}

} // namespace plum
