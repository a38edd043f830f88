#include "ui/launcher_bench.h"

#include "ui/asking/shurubox.h"

#include <QAbstractScrollArea>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class ShuruboxTest : public testing::Test, protected recording::LauncherBench
{
protected:
    // Runs lines as an app that was started in the launcher.
    void run(const QStringList &lines)
    {
        if (!ui.window())
            start();
        state.runlist = lines;
        system.starts().runAll();
    }

    // Runs lines as the script of a command line: there is no launcher then.
    void runAsScriptStart(const QStringList &lines)
    {
        state.runidx[2] = 1;
        state.runctx[1] = u"jb"_s;
        state.runlist = lines;
        system.starts().runAll();
    }

    static QLineEdit *entry() { return inBox<QLineEdit>("Text1"); }
};

} // namespace

TEST_F(ShuruboxTest, aScriptAsksAndGoesOnWithTheAnswer)
{
    run({u"input.text \"who\",\"Your name?\""_s, u"note.down set.who"_s});
    EXPECT_EQ(inBox<QLabel>("title")->text(), u"Your name?"_s);
    EXPECT_EQ(inBox<QLabel>("indim")->text(), u"who"_s);
    EXPECT_FALSE(inBox("indim")->isVisible());
    EXPECT_TRUE(entry()->isVisible());
    type(entry(), u"Ann"_s);
    EXPECT_TRUE(said().isEmpty());
    click(inBox("Label1"));
    EXPECT_EQ(said(), QStringList(u"note Ann"_s));
    EXPECT_FALSE(topLevel("shurubox"));
}

TEST_F(ShuruboxTest, confirmingAnEmptyEntryStoresNothingAndResumes)
{
    run({u"set.who \"before\""_s, u"input.text \"who\",\"?\""_s, u"note.down \"on\""_s,
        u"input.text \"x\",\"?\""_s});
    click(inBox("Label1"));
    EXPECT_EQ(said(), QStringList(u"note on"_s));
    EXPECT_EQ(state.vardict.GetVar(u"who"_s), QString());
}

TEST_F(ShuruboxTest, aLongPromptIsShownWhole)
{
    run({u"input.text \"who\",\"short\""_s});
    const int height = topLevel("shurubox")->height();
    ui.showInput(u"A prompt that goes on "_s.repeated(20), u"who"_s);
    EXPECT_GT(topLevel("shurubox")->height(), height);
    QApplication::processEvents();
    const auto *prompt = inBox<QLabel>("title");
    EXPECT_GE(prompt->height(), prompt->heightForWidth(prompt->width()));
}

TEST_F(ShuruboxTest, enterInTheEntryConfirms)
{
    run({u"input.text \"who\",\"?\""_s, u"note.down set.who"_s});
    type(entry(), u"Bob"_s);
    key(entry(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note Bob"_s));
}

TEST_F(ShuruboxTest, enterElsewhereAndEscAbandonTheRun)
{
    run({u"input.text \"who\",\"?\""_s, u"note.down \"on\""_s});
    key(topLevel("shurubox"), Qt::Key_Return);
    EXPECT_FALSE(topLevel("shurubox"));

    run({u"input.text \"who\",\"?\""_s, u"note.down \"on\""_s});
    key(entry(), Qt::Key_Escape);
    EXPECT_FALSE(topLevel("shurubox"));
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ShuruboxTest, variablesOfAnAbandonedRunStayUntilTheNextEnd)
{
    run({u"set.a \"1\""_s, u"input.text \"who\",\"?\""_s});
    key(entry(), Qt::Key_Escape);
    EXPECT_EQ(state.vardict.GetVar(u"a"_s), u"1"_s);
    run({u"note.down set.a"_s});
    EXPECT_EQ(said(), QStringList(u"note 1"_s));
    EXPECT_EQ(state.vardict.GetVar(u"a"_s), QString());
}

TEST_F(ShuruboxTest, otherKeysOnTheFormDoNothing)
{
    run({u"input.text \"who\",\"?\""_s});
    key(topLevel("shurubox"), Qt::Key_F5);
    key(topLevel("shurubox"), Qt::Key_A, u"a"_s);
    EXPECT_TRUE(topLevel("shurubox"));
}

TEST_F(ShuruboxTest, closingAnInputGoesOnWithoutStoring)
{
    run({u"input.text \"who\",\"?\""_s, u"note.down \"on\""_s});
    type(entry(), u"Ann"_s);
    click(inBox("Image1"));
    EXPECT_EQ(said(), QStringList(u"note on"_s));
    EXPECT_FALSE(topLevel("shurubox"));
}

TEST_F(ShuruboxTest, errorsAfterAClosedBoxAreIgnored)
{
    run({u"input.text \"who\",\"?\""_s, u"input.enter_9 \"|\",\"x\""_s});
    click(inBox("Image1"));
    EXPECT_EQ(user.seen, QStringList(u"6"_s));
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ShuruboxTest, errorsAfterAConfirmedBoxAreFatalInTheLauncher)
{
    run({u"input.text \"who\",\"?\""_s, u"input.enter_9 \"|\",\"x\""_s});
    click(inBox("Label1"));
    EXPECT_EQ(said().last(), u"end process 1"_s);
}

TEST_F(ShuruboxTest, aTipShowsItsTextOnTopAndClosingItGoesOn)
{
    run({u"set.n \"7\""_s, u"os.tips set.n"_s, u"note.down \"on\""_s});
    EXPECT_EQ(inBox<QPlainTextEdit>("tipsbox")->toPlainText(), u"7"_s);
    EXPECT_TRUE(inBox("tipsbox")->isVisible());
    EXPECT_TRUE(topLevel("shurubox")->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(topLevel("shurubox")->parentWidget(), ui.window());
    EXPECT_FALSE(topLevel("shurubox")->isModal());
    click(inBox("Image1"));
    EXPECT_EQ(said(), QStringList(u"note on"_s));
}

TEST_F(ShuruboxTest, anUnknownVariableInATipIsEmpty)
{
    run({u"os.tips set.nothing"_s});
    EXPECT_EQ(inBox<QPlainTextEdit>("tipsbox")->toPlainText(), QString());
}

TEST_F(ShuruboxTest, enterAndEscOnATipAbandonTheRun)
{
    for (const int abandoning : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        run({u"os.tips \"tip\""_s, u"note.down \"on\""_s});
        key(inBox("tipsbox"), abandoning);
        EXPECT_FALSE(topLevel("shurubox"));
    }
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ShuruboxTest, aTipSaysWhatItsKeysDoWhileLinesAreLeft)
{
    run({u"os.tips \"tip\""_s, u"note.down \"on\""_s});
    EXPECT_TRUE(waitUntil([] { return inBox("keys")->isVisible(); }));
    EXPECT_EQ(inBox<QLabel>("keys")->text(), u"✕ goes on with the script · Enter or Esc gives the rest up"_s);

    run({u"os.tips \"tip\""_s, QString(), u"// nothing more"_s});
    QApplication::processEvents();
    EXPECT_FALSE(inBox("keys")->isVisible());
}

TEST_F(ShuruboxTest, aTipOfAScriptStartSaysThatClosingItEndsTheScript)
{
    runAsScriptStart({u"os.tips \"tip\""_s, u"note.down \"on\""_s});
    EXPECT_TRUE(waitUntil([] { return inBox("keys")->isVisible(); }));
    EXPECT_EQ(inBox<QLabel>("keys")->text(), u"✕ ends the script · Enter or Esc only closes this"_s);
}

TEST_F(ShuruboxTest, aScriptStartWhoseTipIsGivenUpSaysThatItStays)
{
    runAsScriptStart({u"os.tips \"tip\""_s, u"note.down \"on\""_s});
    EXPECT_TRUE(said().isEmpty());
    key(inBox("tipsbox"), Qt::Key_Escape);
    EXPECT_EQ(said(),
        QStringList(
            u"stderr nothing is left to run, and the process stays; Ctrl+C or \"kill %1\" ends it."_s.arg(
                QCoreApplication::applicationPid())));
}

TEST_F(ShuruboxTest, aScriptStartThatFailsSaysThatItStays)
{
    state.runidx[2] = 1;
    state.runctx = {u"/a.wf"_s, u"jb"_s};
    state.runlist = QStringList{u"input.enter_9 \"|\",\"x\""_s, u"note.down \"on\""_s};
    ui.runAll();
    ASSERT_EQ(said().size(), 2);
    EXPECT_TRUE(said().at(0).startsWith(u"stderr /a.wf:1: run-time error 9"_s));
    EXPECT_TRUE(said().at(1).contains(u"the process stays"_s));
}

TEST_F(ShuruboxTest, aTipOfAScriptStartThatIsClosedEndsTheProcess)
{
    runAsScriptStart({u"os.tips \"tip\""_s, u"note.down \"on\""_s});
    click(inBox("Image1"));
    EXPECT_EQ(said(), QStringList(u"end process 0"_s));
}

TEST_F(ShuruboxTest, anInputOfAScriptStartThatIsConfirmedGoesOn)
{
    runAsScriptStart({u"input.text \"who\",\"?\""_s, u"note.down set.who"_s});
    type(entry(), u"Ann"_s);
    click(inBox("Label1"));
    EXPECT_EQ(said(), QStringList({u"note Ann"_s, u"end process 0"_s}));
}

TEST_F(ShuruboxTest, aScriptStartWhoseLastLineWasTheQuestionEndsWithTheAnswer)
{
    runAsScriptStart({u"note.down \"asked\""_s, u"input.text \"who\",\"?\""_s});
    click(inBox("Label1"));
    EXPECT_EQ(said(), QStringList({u"note asked"_s, u"end process 0"_s}));
}

TEST_F(ShuruboxTest, anErrorOfAScriptStartIsOneLineAndCarriesOn)
{
    state.runctx[0] = u"x.wf"_s;
    runAsScriptStart({u"input.text \"who\",\"?\""_s, u"input.enter_9 \"|\",\"x\""_s});
    click(inBox("Label1"));
    ASSERT_EQ(said().size(), 2);
    EXPECT_EQ(said().at(0),
        u"stderr x.wf:2: run-time error 9: Subscript out of range: there is no piece 9 "
        "(input.enter_9 \"|\",\"x\")"_s);
    EXPECT_TRUE(said().at(1).contains(u"the process stays"_s));
}

TEST_F(ShuruboxTest, aSuspensionInALoopGoesOnBehindIt)
{
    run({u"while.start \"count\",\"3\""_s, u"note.down \"body\""_s, u"os.tips \"tip\""_s, u"while.end"_s,
        u"note.down \"after\""_s});
    click(inBox("Image1"));
    EXPECT_FALSE(topLevel("shurubox"));
    EXPECT_EQ(said(), QStringList({u"note body"_s, u"note after"_s}));
}

TEST_F(ShuruboxTest, theTextOfABoxThatIsGoneIsEmpty)
{
    run({u"input.text \"who\",\"?\""_s});
    type(entry(), u"Ann"_s);
    EXPECT_EQ(ui.inputEntryText(), u"Ann"_s);
    key(entry(), Qt::Key_Escape);
    EXPECT_EQ(ui.inputEntryText(), QString());
}

TEST_F(ShuruboxTest, eachUseStartsFromAFreshBox)
{
    run({u"input.text \"who\",\"?\""_s});
    type(entry(), u"Ann"_s);
    run({u"input.text \"who\",\"?\""_s});
    EXPECT_EQ(entry()->text(), QString());
    int boxes = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets())
        boxes += widget->objectName() == u"shurubox" && widget->isVisible();
    EXPECT_EQ(boxes, 1);
}

TEST_F(ShuruboxTest, aThousandSuspensionsLeaveOneBox)
{
    start();
    for (int i = 0; i < 1000; ++i)
        ui.showTip(QString::number(i));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    int boxes = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets())
        boxes += widget->objectName() == u"shurubox";
    EXPECT_EQ(boxes, 1);
}

TEST_F(ShuruboxTest, aDroppedShortcutPutsItsTargetIntoTheEntry)
{
    const QString broken = QDir::toNativeSeparators(u"/tmp/broken.lnk"_s);
    platform.shell().shortcuts.insert(QDir::toNativeSeparators(u"/tmp/x.lnk"_s), u"C:\\x.exe"_s);
    run({u"input.text \"who\",\"?\""_s});
    drop(entry(), {QUrl::fromLocalFile(u"/tmp/x.lnk"_s)});
    EXPECT_EQ(entry()->text(), u"C:\\x.exe"_s);
    drop(entry(), {QUrl::fromLocalFile(u"/tmp/broken.lnk"_s)});
    EXPECT_EQ(entry()->text(), broken);
    drop(entry(), {QUrl(u"https://example.org/"_s)});
    EXPECT_EQ(entry()->text(), broken);
}

TEST_F(ShuruboxTest, draggingTheBackgroundMovesTheBox)
{
    run({u"input.text \"who\",\"?\""_s});
    QWidget *box = topLevel("shurubox");
    const QPoint before = box->pos();
    mouse(box, QEvent::MouseButtonPress, {3, 3}, Qt::LeftButton, Qt::LeftButton);
    mouse(box, QEvent::MouseMove, {13, 23}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(box->pos() - before, QPoint(10, 20));
}

TEST_F(ShuruboxTest, aNameForAStorePackageGoesToTheStore)
{
    folder.addApp(u"Calc"_s);
    start();
    ui.askPackageName(u"Calc"_s);
    click(inBox("Image2"));
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"Calc  already exists"_s);
    inBox<QLineEdit>("Text4")->setText(u"new"_s);
    key(inBox("Text4"), Qt::Key_Return);
    ui.askPackageName(u"Calc"_s);
    click(inBox("Label3"));
    EXPECT_EQ(said(), QStringList({u"store install new 1"_s, u"store install Calc 0"_s}));
}

TEST_F(ShuruboxTest, aNameThatIsTakenIsSaidAsItIsTyped)
{
    folder.addApp(u"chess"_s);
    start();
    ui.askPackageName(u"chess"_s);
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"chess  already exists"_s);
    type(inBox("Text4"), u"2"_s);
    EXPECT_EQ(inBox<QLineEdit>("Text4")->text(), u"2"_s);
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), QString());
    inBox<QLineEdit>("Text4")->clear();
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), QString());
    inBox<QLineEdit>("Text4")->setText(u"chess"_s);
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"chess  already exists"_s);
}

TEST_F(ShuruboxTest, cancelStandsAtTheLeftAndInstallsNothing)
{
    start();
    ui.askPackageName(u"chess"_s);
    QWidget *cancel = inBox("cancel");
    for (const char *other : {"Label4", "Label3"})
        EXPECT_LT(cancel->mapToGlobal(QPoint()).x(), inBox(other)->mapToGlobal(QPoint()).x());
    click(cancel);
    EXPECT_FALSE(topLevel("shurubox"));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(ShuruboxTest, theInstallModeBelongsToTheQuestionThatIsOpen)
{
    addApps({u"calc"_s});
    start();
    const QUrl dropped = QUrl::fromLocalFile(
        folder.addPackage(u"calc.wfp"_s, recording::packageOf({{u"main.wf"_s, "dropped"}})));
    drop(find<QAbstractScrollArea>("List")->viewport(), {dropped});
    key(inBox("Text4"), Qt::Key_Escape);
    ui.askPackageName(u"chess"_s);
    click(inBox("Image2"));
    EXPECT_EQ(said(), QStringList(u"store install chess 1"_s));
    EXPECT_EQ(folder.inApps(), QStringList(u"calc"_s));
}

TEST_F(ShuruboxTest, aNameQuestionWaitsForAScriptsQuestion)
{
    run({u"input.text \"who\",\"?\""_s, u"note.down set.who"_s});
    ui.askPackageName(u"calc"_s);
    EXPECT_TRUE(ui.isAskingPackageName());
    EXPECT_TRUE(inBox("title")->isVisible());
    EXPECT_FALSE(inBox("renamebox")->isVisible());

    entry()->setText(u"Ann"_s);
    key(entry(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note Ann"_s));
    ASSERT_TRUE(waitUntil([] { return topLevel("shurubox") && inBox("renamebox")->isVisible(); }));
    EXPECT_EQ(inBox<QLineEdit>("Text4")->text(), u"calc"_s);
}

TEST_F(ShuruboxTest, aScriptsNextQuestionComesBeforeAWaitingName)
{
    run({u"input.text \"who\",\"?\""_s, u"os.tips set.who"_s});
    ui.askPackageName(u"calc"_s);
    entry()->setText(u"Ann"_s);
    key(entry(), Qt::Key_Return);
    EXPECT_TRUE(inBox("tipsbox")->isVisible());
    QCoreApplication::processEvents();
    EXPECT_TRUE(inBox("tipsbox")->isVisible());
    key(inBox("tipsbox"), Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([] { return topLevel("shurubox") && inBox("renamebox")->isVisible(); }));
}

TEST_F(ShuruboxTest, aScriptsQuestionWaitsForAnOpenName)
{
    start();
    ui.askPackageName(u"calc"_s);
    ui.showTip(u"first"_s);
    ui.showTip(u"second"_s);
    EXPECT_TRUE(inBox("renamebox")->isVisible());
    key(inBox("Text4"), Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([] { return topLevel("shurubox") && inBox("tipsbox")->isVisible(); }));
    EXPECT_EQ(inBox<QPlainTextEdit>("tipsbox")->toPlainText(), u"second"_s);
    EXPECT_FALSE(ui.isAskingPackageName());
}

TEST_F(ShuruboxTest, theNameBoxTakesTheRuleOfEveryKeyword)
{
    addApps({u"b"_s});
    start();
    const QByteArray before = recording::bytesOf(folder.script(u"b"_s));
    const QUrl dropped = QUrl::fromLocalFile(
        folder.addPackage(u"b.wfp"_s, recording::packageOf({{u"main.wf"_s, "dropped"}})));
    drop(find<QAbstractScrollArea>("List")->viewport(), {dropped});
    for (const QString &name : {u"b|piano"_s, u"a:b"_s, u"../x"_s, u"a*"_s, u".."_s}) {
        inBox<QLineEdit>("Text4")->setText(name);
        key(inBox("Text4"), Qt::Key_Return);
        ASSERT_TRUE(topLevel("shurubox")) << qPrintable(name);
        EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"Can not exist *[\\/:*?\"<|>]*"_s);
    }
    EXPECT_EQ(recording::bytesOf(folder.script(u"b"_s)), before);
    EXPECT_EQ(folder.inApps(), QStringList(u"b"_s));

    inBox<QLineEdit>("Text4")->setText(QString(256, u'n'));
    key(inBox("Text4"), Qt::Key_Return);
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"This keyword is too long for the name of a folder."_s);
}

TEST_F(ShuruboxTest, theDetailsShowThePackageAndLeadBack)
{
    start();
    ui.askPackageName(u"calc"_s);
    click(inBox("Label4"));
    EXPECT_TRUE(inBox("setupbox")->isVisible());
    EXPECT_EQ(inBox<QLineEdit>("Text2")->text(), u"calc"_s);
    click(inBox("setupback"));
    EXPECT_TRUE(inBox("renamebox")->isVisible());
}

TEST(Shurubox, aNameThatDiffersInLetterCaseAloneExists)
{
    recording::LibraryBench bench;
    if (bench.paths.programFolder() != bench.folder.path())
        GTEST_SKIP() << "This system knows the program folder by itself: it is that of the tests.";
    bench.folder.addApp(u"Calc"_s);
    const AppLibrary &apps = bench.appLibrary;
    shurubox box(bench.shell,
        {.exists = [&](const QString &keyword) { return apps.exists(keyword); },
            .faultOf = [](const QString &) { return QString(); }},
        nullptr);
    box.setAttribute(Qt::WA_DeleteOnClose, false);
    box.showName(u"cALC"_s, u"cALC"_s);
    recording::LauncherBench::click(box.findChild<QWidget *>(u"Image2"_s));
    EXPECT_EQ(box.findChild<QLabel *>(u"Label6"_s)->text(), u"cALC  already exists"_s);
}

TEST_F(ShuruboxTest, piecesOfTheTypedTextAreStoredAfterTheirNumberWasShown)
{
    start();
    type(find("Text8"), u"mail Ann,Bob"_s);
    run({u"input.enter_2 \"_,_\",\"who\""_s, u"note.down set.who"_s});
    EXPECT_EQ(user.seen, QStringList(u"6"_s));
    EXPECT_EQ(said(), QStringList(u"note Bob"_s));
}

TEST_F(ShuruboxTest, nothingTypedAfterTheKeywordStoresTheEmptyText)
{
    start();
    type(find("Text8"), u"mail"_s);
    run({u"set.who \"x\""_s, u"input.enter \"who\""_s, u"note.down set.who"_s});
    EXPECT_EQ(said(), QStringList(u"note "_s));
}

TEST_F(ShuruboxTest, meHideHidesTheLauncher)
{
    run({u"me.hide"_s});
    EXPECT_FALSE(ui.window()->isVisible());
}

} // namespace plum
