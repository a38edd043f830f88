#include "ui/asking/install_dialog.h"

#include "library/install_offer.h"
#include "look/translations.h"
#include "platform/recording/recording_platform.h"
#include "ui/asking/install_questions.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

constexpr auto patience = std::chrono::seconds(60);

bool eventually(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, static_cast<int>(std::chrono::milliseconds(patience).count()));
}

class InstallDialogTest : public testing::Test
{
protected:
    InstallDialogTest()
    {
        QObject::connect(dialog, &InstallDialog::seen, dialog, [this] { sinceSeen.start(); });
        QObject::connect(dialog, &InstallDialog::agreed, dialog, [this] { agreed = sinceSeen.elapsed(); });
    }
    ~InstallDialogTest() override { delete dialog; }

    void show()
    {
        dialog->bringUp();
        ASSERT_TRUE(eventually([this] { return sinceSeen.isValid(); }));
    }

    // Until "yes" counts, with the same clock as the dialog's.
    void waitUntilRipe()
    {
        ASSERT_TRUE(
            eventually([this] { return sinceSeen.hasExpired(InstallDialog::ripeAfter.count() + 1); }));
    }

    template <typename Widget = QWidget> Widget &child(const QString &name)
    {
        auto *found = dialog->findChild<Widget *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return *found;
    }

    void press(bool isHeld = false)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, isHeld);
        QApplication::sendEvent(&child(u"install"_s), &event);
    }

    QPointer<InstallDialog> dialog{
        new InstallDialog({.keyword = u"notes"_s, .origin = u"http://shop.test/notes.wfp"_s})};
    QElapsedTimer sinceSeen;
    qint64 agreed = -1; // how old the dialog was
};

} // namespace

TEST_F(InstallDialogTest, SaysWhatAndFromWhere)
{
    show();
    EXPECT_EQ(dialog->windowTitle(), u"Plum asks"_s);
    EXPECT_TRUE(dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(child<QLabel>(u"keyword"_s).text(), u"notes"_s);
    EXPECT_EQ(child<QLabel>(u"origin"_s).text(), u"http://shop.test/notes.wfp"_s);
    EXPECT_EQ(child<QLabel>(u"question"_s).text(), u"Install this app?"_s);
    EXPECT_TRUE(child(u"install"_s).hasFocus());
}

TEST_F(InstallDialogTest, SaysWhatIsKnownOfThePackageAndWhatIsNot)
{
    EXPECT_EQ(child<QLabel>(u"facts"_s).text(), u"Version and size are not known before it has come."_s);
    EXPECT_EQ(dialog->findChild<QLabel *>(u"unsigned"_s), nullptr);

    const InstallDialog file({.keyword = u"notes"_s, .size = 1536});
    EXPECT_EQ(file.findChild<QLabel *>(u"facts"_s)->text(), u"1.5 kB"_s);
    const InstallDialog named({.keyword = u"notes"_s, .version = u"1.2"_s, .size = 100});
    EXPECT_EQ(named.findChild<QLabel *>(u"facts"_s)->text(), u"Version 1.2, 100 bytes"_s);
    const InstallDialog local({.keyword = u"notes"_s, .fromUnsignedStore = true});
    EXPECT_EQ(local.findChild<QLabel *>(u"unsigned"_s)->text(),
        u"This store is on this computer and signs nothing."_s);
}

TEST_F(InstallDialogTest, EnterCountsOnceItHasBeenSeenForHalfASecond)
{
    show();
    EXPECT_TRUE(eventually([this] {
        if (agreed < 0)
            press();
        return agreed >= 0;
    }));
    EXPECT_GE(agreed, InstallDialog::ripeAfter.count());
    EXPECT_TRUE(!dialog || !dialog->isVisible());
}

TEST_F(InstallDialogTest, AClickThatBeganTooEarlyDoesNotCount)
{
    QWidget &install = child(u"install"_s);
    // Until the press came early also where the machine stood still for a moment.
    ASSERT_TRUE(eventually([&] {
        dialog->hide();
        sinceSeen.invalidate();
        show();
        QTest::mousePress(&install, Qt::LeftButton);
        return !sinceSeen.hasExpired(InstallDialog::ripeAfter.count());
    }));
    waitUntilRipe();
    QTest::mouseRelease(&install, Qt::LeftButton);
    EXPECT_EQ(agreed, -1);
    QTest::mouseClick(&install, Qt::LeftButton);
    EXPECT_GE(agreed, InstallDialog::ripeAfter.count());
}

TEST_F(InstallDialogTest, AHeldKeyDoesNotCount)
{
    show();
    waitUntilRipe();
    press(true);
    EXPECT_EQ(agreed, -1);
    press();
    EXPECT_GE(agreed, 0);
}

TEST_F(InstallDialogTest, HiddenAndShownItHasToBeSeenAnew)
{
    show();
    waitUntilRipe();
    sinceSeen.invalidate();
    dialog->hide();
    show();
    press();
    EXPECT_TRUE(agreed < 0 || agreed >= InstallDialog::ripeAfter.count());
    waitUntilRipe();
    if (agreed < 0)
        press();
    EXPECT_GE(agreed, InstallDialog::ripeAfter.count());
}

TEST_F(InstallDialogTest, CancelAndEscapeInstallNothing)
{
    show();
    waitUntilRipe();
    QSignalSpy closed(dialog, &InstallDialog::closed);
    QTest::mouseClick(&child(u"cancel"_s), Qt::LeftButton);
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(agreed, -1);

    dialog = new InstallDialog({.keyword = u"notes"_s, .origin = {}});
    dialog->bringUp();
    QSignalSpy closedAgain(dialog, &InstallDialog::closed);
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_EQ(closedAgain.size(), 1);
}

TEST(InstallDialogTexts, ANameIsShownAsItIsAndNeverWiderThanTheDialog)
{
    InstallDialog dialog({.keyword = u"<b>a</b>"_s, .origin = QString(3000, u'x'), .replaces = true});
    EXPECT_EQ(dialog.findChild<QLabel *>(u"keyword"_s)->text(), u"<b>a</b>"_s);
    EXPECT_EQ(dialog.findChild<QLabel *>(u"keyword"_s)->textFormat(), Qt::PlainText);
    EXPECT_LT(dialog.sizeHint().width(), 600);
    EXPECT_EQ(dialog.findChild<QLabel *>(u"question"_s)->text(),
        u"Install this app in place of the one that is there?"_s);
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
}

namespace {

InstallDialog *openDialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *dialog = qobject_cast<InstallDialog *>(widget); dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

} // namespace

TEST(InstallQuestionsTest, OneIsShownAtATimeAndEachAnswerIsForItsOwn)
{
    recording::RecordingPlatform platform;
    InstallQuestions questions(platform.windows());
    QStringList installed;
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
        questions.ask({.keyword = name, .origin = {}}, [&installed, name] { installed += name; });

    const auto shows = [](const QString &name) {
        const InstallDialog *dialog = openDialog();
        return dialog && dialog->findChild<QLabel *>(u"keyword"_s)->text() == name;
    };
    ASSERT_TRUE(shows(u"a"_s));
    QTest::keyClick(openDialog(), Qt::Key_Escape);
    ASSERT_TRUE(shows(u"b"_s));
    EXPECT_TRUE(eventually([&] {
        if (shows(u"b"_s))
            QTest::keyClick(openDialog(), Qt::Key_Return);
        return shows(u"c"_s) && !installed.isEmpty();
    }));
    EXPECT_EQ(installed, QStringList{u"b"_s});
    EXPECT_TRUE(questions.isAsking());
    openDialog()->close();
    EXPECT_FALSE(questions.isAsking());
    EXPECT_EQ(installed, QStringList{u"b"_s});
}

TEST(InstallDialogTexts, SayWhatTheAppMayDo)
{
    const auto sheetOf = [](const InstallOffer &offer) {
        const InstallDialog dialog(offer);
        return dialog.findChild<QLabel *>(u"sheet"_s)->text();
    };
    const QByteArray lock = R"({"session":["lock"]})";
    const QByteArray more = R"({"session":["lock","restart"]})";
    EXPECT_TRUE(sheetOf({.keyword = u"a"_s}).startsWith(u"What it may do is worked out"_s));
    EXPECT_TRUE(
        sheetOf({.keyword = u"a"_s, .sheet = "no sheet"}).startsWith(u"What it may do is worked out"_s));
    EXPECT_EQ(sheetOf({.keyword = u"a"_s, .sheet = lock}), u"Locks the screen.\nContacts nobody."_s);
    // What it could do already is not said again.
    EXPECT_EQ(sheetOf({.keyword = u"a"_s, .sheet = more, .granted = lock}),
        u"It could not do this before:\nRestarts the machine without asking programs."_s);
    EXPECT_EQ(sheetOf({.keyword = u"a"_s, .sheet = lock, .granted = more}),
        u"It may do nothing that it could not do before."_s);
}

TEST(InstallDialogTexts, SayItInTheLanguageOfTheSession)
{
    const QList<QTranslator *> before = qApp->findChildren<QTranslator *>();
    installTranslation(*qApp, QLocale(QLocale::Chinese, QLocale::China));
    const InstallDialog dialog({.keyword = u"a"_s,
        .sheet = R"({"read":["apps:note/100%1.txt","given"],"input":["keys"],"window":"Notes"})"});
    EXPECT_EQ(dialog.findChild<QLabel *>(u"sheet"_s)->text(),
        u"读取应用 note 的文件夹里的 100%1.txt 和您输入或拖入的文件。\n按下按键（在窗口 Notes 中）。\n不与任何人联系。"_s);
    for (QTranslator *each : qApp->findChildren<QTranslator *>()) {
        if (!before.contains(each))
            delete each;
    }
}

TEST(InstallDialogTexts, ScrollWhereTheyAreTooLongForTheScreen)
{
    const auto shown = [](const QByteArray &sheet) {
        auto dialog = std::make_unique<InstallDialog>(InstallOffer{.keyword = u"a"_s, .sheet = sheet});
        dialog->setAttribute(Qt::WA_DeleteOnClose, false);
        dialog->bringUp();
        return dialog;
    };
    const auto areaOf
        = [](const InstallDialog &dialog) { return dialog.findChild<QScrollArea *>(u"sheetarea"_s); };
    const auto isWhole = [](const InstallDialog &dialog, const QString &name) {
        const auto *control = dialog.findChild<QWidget *>(name);
        return dialog.rect().contains(QRect(control->mapTo(&dialog, QPoint()), control->size()));
    };

    const auto lengthy
        = shown(R"({"read":["file:/srv/one.txt","file:/srv/two.txt"],"session":["lock","restart"],
        "network":["host:one.example","host:two.example"],"see":["clipboard","screen"]})");
    QApplication::processEvents();
    EXPECT_EQ(areaOf(*lengthy)->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(lengthy->grab().toImage().pixelColor(areaOf(*lengthy)->mapTo(lengthy.get(), QPoint(1, 1))),
        lengthy->theme().window);
    constexpr int missing = 60; // pixels that a small screen does not have
    lengthy->setFixedHeight(lengthy->height() - missing);
    ASSERT_TRUE(eventually([&] { return areaOf(*lengthy)->verticalScrollBar()->maximum() > 0; }));
    for (const QString &name : {u"question"_s, u"keyword"_s, u"install"_s, u"cancel"_s})
        EXPECT_TRUE(isWhole(*lengthy, name)) << name.toStdString();
    EXPECT_EQ(areaOf(*lengthy)->focusPolicy(), Qt::StrongFocus);
    QTest::keyClick(areaOf(*lengthy), Qt::Key_Down);
    EXPECT_GT(areaOf(*lengthy)->verticalScrollBar()->value(), 0);

    lengthy->setFixedHeight(lengthy->height() + missing);
    EXPECT_TRUE(eventually([&] { return areaOf(*lengthy)->verticalScrollBar()->maximum() == 0; }));
    EXPECT_EQ(areaOf(*lengthy)->focusPolicy(), Qt::NoFocus);
}

TEST(InstallDialogTexts, AskWhetherAChangedAppMayRun)
{
    const InstallDialog dialog(
        {.keyword = u"a"_s, .asks = InstallOffer::Asks::RunChanged, .sheet = R"({"session":["lock"]})"});
    EXPECT_EQ(dialog.findChild<QLabel *>(u"question"_s)->text(),
        u"The script of this app has changed. May it run like this?"_s);
    EXPECT_EQ(dialog.findChild<QPushButton *>(u"install"_s)->text(), u"Run"_s);
    EXPECT_EQ(dialog.findChild<QLabel *>(u"facts"_s), nullptr);
}
