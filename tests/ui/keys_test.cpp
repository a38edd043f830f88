#include "ui/frm_set_fixture.h"

#include "ui/editing/edit_panel.h"

#include <QLabel>
#include <QShortcut>
#include <QTextBrowser>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::writeBytes;

namespace {

// The main panel without a mouse.
class KeysTest : public FrmSetTest
{
protected:
    // A shortcut of the panel.
    void press(const QKeySequence &keys)
    {
        for (QShortcut *shortcut : find("okbox")->findChildren<QShortcut *>()) {
            if (shortcut->key() == keys) {
                Q_EMIT shortcut->activated();
                return;
            }
        }
        FAIL() << "no shortcut " << qPrintable(keys.toString());
    }

    // A shortcut of the window.
    void pressAnywhere(const QKeySequence &keys)
    {
        for (QShortcut *shortcut : ui.window()->findChildren<QShortcut *>()) {
            if (shortcut->key() == keys)
                Q_EMIT shortcut->activated();
        }
    }

    bool tab()
    {
        key(ui.window()->focusWidget(), Qt::Key_Tab);
        return ui.window()->focusWidget() != nullptr;
    }

    KeywordList *list(const char *name) { return find<KeywordList>(name); }
    QString hint() { return find<QLabel>("hint")->isVisible() ? find<QLabel>("hint")->text() : QString(); }
};

} // namespace

TEST_F(KeysTest, aKeywordThatNoAppHasIsOfferedAsANewOne)
{
    addApps({u"mail"_s});
    start();
    type(text8(), u"zz"_s);
    EXPECT_TRUE(hint().startsWith(u"No app has this keyword."_s));
    EXPECT_TRUE(hint().contains(u"Create it? (Ctrl+N)"_s));
    press(QKeySequence(u"Ctrl+N"_s));
    EXPECT_TRUE(inFront("addeditbox"));
    EXPECT_EQ(find<QLineEdit>("Text7")->text(), u"zz"_s);
    EXPECT_TRUE(find("Text4")->hasFocus());
    click(find("Image5"));
    EXPECT_FALSE(hint().contains(u"No app"_s));
    EXPECT_EQ(listed("List2"), QStringList(u"zz"_s));
}

TEST_F(KeysTest, aTextThatCameWithItsBlankSaysThatEnterRunsNothingAndOffersToLook)
{
    addApps({u"one"_s, u"mail"_s});
    start();
    find<QLineEdit>("Text8")->insert(u"mail Ann"_s);
    EXPECT_TRUE(hint().startsWith(u"Enter runs nothing yet."_s));
    EXPECT_TRUE(hint().contains(u"Look for \"mail\""_s));
    key(text8(), Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
    find("hint")->setFocus();
    key(find("hint"), Qt::Key_Return);
    EXPECT_EQ(listed("List2"), QStringList(u"mail"_s));
    EXPECT_TRUE(inFront("List2"));
    EXPECT_TRUE(list("List2")->isMarked(u"mail"_s));
    EXPECT_TRUE(keywordBoxHasFocus());
    EXPECT_EQ(typed(), u"mail Ann"_s);
    EXPECT_FALSE(hint().contains(u"Enter"_s));
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note mail"_s));
}

TEST_F(KeysTest, aTextThatCameWithItsBlankAndNoAppsKeywordOffersToMakeTheApp)
{
    addApps({u"mail"_s});
    start();
    find<QLineEdit>("Text8")->insert(u"zz Ann"_s);
    EXPECT_TRUE(hint().startsWith(u"No app has this keyword."_s));
    press(QKeySequence(u"Ctrl+N"_s));
    EXPECT_EQ(find<QLineEdit>("Text7")->text(), u"zz"_s);
}

TEST_F(KeysTest, aTextThatBeginsWithABlankSaysWhereTheKeywordBelongs)
{
    addApps({u"mail"_s});
    start();
    find<QLineEdit>("Text8")->insert(u" mail"_s);
    EXPECT_EQ(hint(), u"Enter runs nothing: the keyword comes before the first blank."_s);
}

TEST_F(KeysTest, aResultThatStaysSelectedSaysThatEnterInTheKeywordBoxRunsNothing)
{
    addApps({u"mail"_s, u"main"_s});
    start();
    type(text8(), u"ma"_s);
    key(text8(), Qt::Key_Down);
    EXPECT_FALSE(hint().contains(u"Enter"_s)) << "it runs the selected one";
    key(list("List2"), Qt::Key_Left);
    EXPECT_TRUE(keywordBoxHasFocus());
    EXPECT_TRUE(hint().startsWith(u"Enter in the keyword box runs nothing while \"mail\" is selected."_s));
    find("hint")->setFocus();
    key(find("hint"), Qt::Key_Return);
    EXPECT_TRUE(keywordBoxHasFocus());
    EXPECT_FALSE(hint().contains(u"Enter"_s));
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note mail"_s));
}

TEST_F(KeysTest, theLineSaysAKeywordAsItIsWrittenAndNotAllOfALongOne)
{
    addApps({u"a&b"_s, QString(60, u'k')});
    start();
    find<QLineEdit>("Text8")->insert(u"a&b x"_s);
    EXPECT_TRUE(hint().contains(u"Look for \"a&amp;b\""_s));
    find<QLineEdit>("Text8")->setText(QString(60, u'k') + u" x"_s);
    EXPECT_TRUE(hint().contains(u'"' + QString(40, u'k') + u"…\""_s));
}

TEST_F(KeysTest, theRowThatEnterWouldRunIsMarkedAndNotSelected)
{
    addApps({u"one"_s, u"mail"_s, u"main"_s});
    start();
    EXPECT_FALSE(list("List")->isMarked(u"one"_s));
    type(text8(), u"ma"_s);
    EXPECT_TRUE(list("List2")->isMarked(u"mail"_s));
    EXPECT_FALSE(list("List2")->isMarked(u"main"_s));
    EXPECT_EQ(list("List2")->text(), QString());
    type(text8(), u" x"_s);
    EXPECT_TRUE(list("List2")->isMarked(u"mail"_s));
    key(text8(), Qt::Key_Down);
    EXPECT_FALSE(list("List2")->isMarked(u"mail"_s)) << "Enter in the keyword box runs nothing now";
}

TEST_F(KeysTest, typingInAListGoesOnInTheKeywordBox)
{
    addApps({u"mail"_s, u"main"_s});
    start();
    type(text8(), u"ma"_s);
    key(text8(), Qt::Key_Down);
    type(list("List2"), u"i"_s);
    EXPECT_EQ(typed(), u"mai"_s);
    EXPECT_TRUE(keywordBoxHasFocus());
    EXPECT_EQ(listed("List2"), QStringList({u"mail"_s, u"main"_s}));
}

TEST_F(KeysTest, upInTheFirstRowReturnsToTheKeywordBox)
{
    addApps({u"one"_s, u"two"_s});
    start();
    type(text8(), u"o"_s);
    key(text8(), Qt::Key_Down);
    key(list("List2"), Qt::Key_Down);
    key(list("List2"), Qt::Key_Up);
    EXPECT_FALSE(keywordBoxHasFocus());
    key(list("List2"), Qt::Key_Up);
    EXPECT_TRUE(keywordBoxHasFocus());
    key(text8(), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note one"_s));
}

TEST_F(KeysTest, theFilterStandsAfterARename)
{
    addApps({u"mail"_s, u"main"_s});
    start();
    type(text8(), u"ma"_s);
    key(text8(), Qt::Key_Down);
    key(list("List2"), Qt::Key_F2);
    ASSERT_TRUE(inFront("editnamebox"));
    EXPECT_EQ(find<QLineEdit>("Text1")->text(), u"mail"_s);
    type(find("Text12"), u"post"_s);
    click(find("Image10"));
    EXPECT_EQ(typed(), u"ma"_s);
    EXPECT_EQ(listed("List2"), QStringList(u"main"_s));
}

TEST_F(KeysTest, deleteAsksAndThenTheNextKeyFiltersAnew)
{
    addApps({u"mail"_s, u"note"_s});
    start();
    type(text8(), u"ma"_s);
    key(text8(), Qt::Key_Down);
    key(list("List2"), Qt::Key_Delete);
    EXPECT_EQ(user.seen.size(), 1);
    EXPECT_EQ(listed("List"), QStringList(u"note"_s));
    EXPECT_TRUE(inFront("List"));
    EXPECT_EQ(ui.window()->focusWidget(), find("Text8"));
    EXPECT_EQ(find<QLineEdit>("Text8")->selectedText(), u"ma"_s);
    type(text8(), u"n"_s);
    EXPECT_EQ(listed("List2"), QStringList(u"note"_s));
}

TEST_F(KeysTest, theMenuKeyOpensTheListsMenuForTheSelectedApp)
{
    addApps({u"one"_s, u"two"_s});
    start();
    key(text8(), Qt::Key_Down);
    key(list("List"), Qt::Key_Down);
    for (const auto &[menuKey, modifiers] : {std::pair(Qt::Key_Menu, Qt::KeyboardModifiers()),
             std::pair(Qt::Key_F10, Qt::KeyboardModifiers(Qt::ShiftModifier))}) {
        key(list("List"), menuKey, {}, modifiers);
        ASSERT_TRUE(topLevel("list2you"));
        topLevel("list2you")->hide();
    }
    EXPECT_EQ(ui.window()->selectedKeyword(), u"two"_s);
}

TEST_F(KeysTest, escGoesBackOneStepAtATime)
{
    writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    addApps({u"one"_s});
    start();
    type(text8(), u"o"_s);
    key(text8(), Qt::Key_Down);
    key(list("List2"), Qt::Key_Escape);
    EXPECT_TRUE(keywordBoxHasFocus());
    EXPECT_EQ(typed(), u"o"_s);
    key(text8(), Qt::Key_Escape);
    EXPECT_EQ(typed(), QString());
    EXPECT_TRUE(ui.window()->isVisible());
    key(text8(), Qt::Key_Escape);
    EXPECT_FALSE(ui.window()->isVisible());
}

TEST_F(KeysTest, escDoesNotHideALauncherThatNothingBringsBack)
{
    start();
    key(text8(), Qt::Key_Escape);
    EXPECT_TRUE(ui.window()->isVisible());
}

TEST_F(KeysTest, escLeavesAPanel)
{
    addApps({u"one"_s});
    start();
    key(text8(), Qt::Key_Down);
    key(list("List"), Qt::Key_F2);
    key(find("Text12"), Qt::Key_Escape);
    EXPECT_TRUE(inFront("okbox"));
    press(QKeySequence(u"Ctrl+N"_s));
    type(find("Text7"), u"x"_s);
    user.answer = QMessageBox::Cancel;
    key(find("Text4"), Qt::Key_Escape);
    EXPECT_EQ(user.seen, QStringList(u"\"x\" is not saved."_s));
    EXPECT_TRUE(inFront("addeditbox"));
}

TEST_F(KeysTest, f1ShowsTheManualAndEscHidesIt)
{
    start();
    pressAnywhere(QKeySequence(Qt::Key_F1));
    QWidget *manual = topLevel("manual");
    ASSERT_TRUE(manual);
    EXPECT_TRUE(manual->findChild<QTextBrowser *>()->toPlainText().startsWith(u"Writing apps"_s));
    key(manual, Qt::Key_Escape);
    EXPECT_FALSE(topLevel("manual"));
    EXPECT_TRUE(ui.window()->isVisible());
}

TEST_F(KeysTest, aLinkOfTheManualLeadsToItsPageAndBackLeadsBack)
{
    start();
    pressAnywhere(QKeySequence(Qt::Key_F1));
    auto *text = topLevel("manual")->findChild<QTextBrowser *>();
    Q_EMIT text->anchorClicked(QUrl(u"edition-1.md#mouse"_s));
    EXPECT_FALSE(text->toPlainText().startsWith(u"Writing apps"_s));
    click(topLevel("manual")->findChild<QWidget *>(u"backpage"_s));
    EXPECT_TRUE(text->toPlainText().startsWith(u"Writing apps"_s));
}

TEST_F(KeysTest, theFirstTabShowsWhereItWentAndTheRowCanBeRun)
{
    addApps({u"one"_s, u"two"_s});
    start();
    const QImage before = list("List")->grab().toImage();
    ASSERT_TRUE(tab());
    ASSERT_TRUE(list("List")->hasFocus());
    QApplication::processEvents();
    EXPECT_NE(list("List")->grab().toImage(), before);
    EXPECT_EQ(list("List")->text(), QString()) << "Tab selects nothing";
    key(list("List"), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note one"_s));
}

TEST_F(KeysTest, tabInAnEmptyListShowsWhereItWent)
{
    start();
    const QImage before = list("List")->grab().toImage();
    ASSERT_TRUE(tab());
    ASSERT_TRUE(list("List")->hasFocus());
    QApplication::processEvents();
    EXPECT_NE(list("List")->grab().toImage(), before);
}

TEST_F(KeysTest, tabReachesTheOfferOfAHotkeyAndEnterTakesIt)
{
    start();
    tab();
    tab();
    auto *footer = find<QLabel>("hint");
    ASSERT_TRUE(footer->hasFocus());
    ASSERT_TRUE(hint().contains(u"Choose one"_s));
    key(footer, Qt::Key_Return);
    EXPECT_TRUE(topLevel("hotkey"));
}

TEST_F(KeysTest, tabGoesOnFromTheTopWhenItHasReachedTheEnd)
{
    addApps({u"one"_s});
    start();
    QStringList order;
    for (int i = 0; i < 7; ++i) {
        tab();
        order += ui.window()->focusWidget()->objectName();
    }
    EXPECT_EQ(order,
        QStringList({u"List"_s, u"hint"_s, u"store"_s, u"menuimg"_s, u"Image6"_s, u"Image7"_s, u"Text8"_s}));
}

TEST_F(KeysTest, shiftF1ShowsThePageOfKeysAndEscClosesIt)
{
    start();
    pressAnywhere(QKeySequence(u"Shift+F1"_s));
    QWidget *sheet = topLevel("keysheet");
    ASSERT_TRUE(sheet);
    key(sheet, Qt::Key_Escape);
    EXPECT_FALSE(topLevel("keysheet"));
}

TEST_F(KeysTest, runAndEditHaveKeys)
{
    addApps({u"one"_s, u"two"_s});
    start();
    type(text8(), u"tw"_s);
    press(QKeySequence(Qt::Key_F5));
    EXPECT_EQ(said(), QStringList(u"note two"_s));
    press(QKeySequence(u"Ctrl+E"_s));
    EXPECT_TRUE(inFront("addeditbox"));
    EXPECT_EQ(find<QLineEdit>("Text7")->text(), u"two"_s);
}

} // namespace plum
