#include "ui/launcher_bench.h"

#include "ui/hotkey_window.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

class HotkeyTest : public testing::Test, protected recording::LauncherBench
{
protected:
    void startWith(const QByteArray &saved)
    {
        writeBytes(folder.setIni(), "[hotkey]\r\nhotkey=" + saved + "\r\n");
        startUi();
        EXPECT_TRUE(waitUntil([this] { return ui.window()->isActiveWindow(); }));
    }

    template <typename Widget> Widget *control(const char *name)
    {
        auto *found = ui.window()->findChild<QWidget *>(u"hotkey"_s);
        return found ? found->findChild<Widget *>(QLatin1StringView(name)) : nullptr;
    }

    QRadioButton *option(int index) { return control<QRadioButton>(qPrintable(u"optKey%1"_s.arg(index))); }
    QComboBox *letter() { return control<QComboBox>("cboLetter"); }

    void open()
    {
        if (!ui.window())
            start();
        click(find("menuimg"));
    }

    void press(const char *name) { control<QAbstractButton>(name)->click(); }
    QStringList hotkeyCalls() { return said().filter(u"hotkey "_s); }
    bool launcherVisible() { return ui.window()->isVisible(); }
};

} // namespace

TEST_F(HotkeyTest, aSavedHotkeyChoosesItsControlsAndIsRegistered)
{
    startWith("Shift+B");
    EXPECT_TRUE(option(2)->isChecked());
    EXPECT_EQ(letter()->currentText(), u"B"_s);
    EXPECT_EQ(hotkeyCalls(), QStringList(u"hotkey register 4 66"_s));
    EXPECT_FALSE(topLevel("hotkey"));
}

TEST_F(HotkeyTest, ctrlQIsRestored)
{
    startWith("Ctrl+Q");
    EXPECT_TRUE(option(1)->isChecked());
    EXPECT_EQ(letter()->currentText(), u"Q"_s);
    EXPECT_EQ(hotkeyCalls(), QStringList(u"hotkey register 2 81"_s));
}

TEST_F(HotkeyTest, aModifierInOtherLettersChoosesNone)
{
    startWith("ctrl+B");
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(option(i)->isChecked());
    EXPECT_EQ(letter()->currentText(), u"B"_s);
    EXPECT_EQ(hotkeyCalls(), QStringList(u"hotkey register 0 66"_s));
}

TEST_F(HotkeyTest, aTextWithoutAPlusIsModifierAndLetterAtOnce)
{
    startWith("Shift");
    EXPECT_TRUE(option(2)->isChecked());
    EXPECT_EQ(letter()->currentIndex(), -1);
    EXPECT_TRUE(hotkeyCalls().isEmpty());
}

TEST_F(HotkeyTest, aSmallLetterChoosesNone)
{
    startWith("Alt+z");
    EXPECT_TRUE(option(0)->isChecked());
    EXPECT_EQ(letter()->currentIndex(), -1);
    EXPECT_TRUE(hotkeyCalls().isEmpty());
}

TEST_F(HotkeyTest, anEmptyOrStrangeTextRegistersNothing)
{
    startWith("");
    EXPECT_TRUE(hotkeyCalls().isEmpty());
    EXPECT_EQ(letter()->currentIndex(), -1);
}

TEST_F(HotkeyTest, theLettersAreAToZ)
{
    open();
    EXPECT_EQ(letter()->count(), 26);
    EXPECT_EQ(letter()->itemText(0), u"A"_s);
    EXPECT_EQ(letter()->itemText(25), u"Z"_s);
    EXPECT_EQ(letter()->currentIndex(), -1);
}

TEST_F(HotkeyTest, confirmingRegistersHidesAndSaves)
{
    open();
    option(0)->click();
    letter()->setCurrentText(u"Z"_s);
    press("hotok");
    EXPECT_EQ(hotkeyCalls(), QStringList(u"hotkey register 1 90"_s));
    EXPECT_FALSE(topLevel("hotkey"));
    EXPECT_EQ(bytesOf(folder.setIni()), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    EXPECT_EQ(find<QLabel>("hint")->text(), u"Alt+Z shows Plum"_s);
}

TEST_F(HotkeyTest, thereIsNothingToConfirmWithoutAModifierAndALetter)
{
    open();
    EXPECT_FALSE(control<QWidget>("hotok")->isEnabled());
    letter()->setCurrentText(u"K"_s);
    EXPECT_FALSE(control<QWidget>("hotok")->isEnabled());
    press("hotok");
    EXPECT_TRUE(hotkeyCalls().isEmpty());
    option(1)->click();
    EXPECT_TRUE(control<QWidget>("hotok")->isEnabled());
    letter()->setCurrentIndex(-1);
    EXPECT_FALSE(control<QWidget>("hotok")->isEnabled());
}

TEST_F(HotkeyTest, aConfirmedHotkeyIsNamedUnderTheLists)
{
    open();
    option(1)->click();
    letter()->setCurrentText(u"J"_s);
    press("hotok");
    EXPECT_EQ(find<QLabel>("hint")->text(), u"Ctrl+J shows Plum"_s);
    open();
    EXPECT_EQ(control<QLabel>("Label2")->text(), u"Ctrl+J shows and hides Plum."_s);
}

TEST_F(HotkeyTest, aBareLetterOfDamagedSettingsIsWarnedOf)
{
    startWith("ctrl+B");
    EXPECT_TRUE(find<QLabel>("hint")->text().startsWith(u"The key B alone shows Plum"_s));
    EXPECT_TRUE(find<QLabel>("hint")->text().contains(u"Choose another one"_s));
}

TEST_F(HotkeyTest, theWindowManagersCloseHidesAndKeepsTheHotkey)
{
    startWith("Alt+Z");
    open();
    platform.log.clear();
    topLevel("hotkey")->close();
    EXPECT_FALSE(topLevel("hotkey"));
    EXPECT_TRUE(hotkeyCalls().isEmpty());
}

TEST_F(HotkeyTest, eachButtonSaysWhatItDoes)
{
    open();
    for (const char *name : {"Command1", "Command2", "cmdMain0", "cmdMain1"})
        EXPECT_FALSE(control<QWidget>(name)->accessibleDescription().isEmpty()) << name;
}

TEST_F(HotkeyTest, aTakenCombinationIsSaidInWords)
{
    platform.hotkey().succeeds = false;
    open();
    option(1)->click();
    letter()->setCurrentText(u"A"_s);
    press("hotok");
    EXPECT_TRUE(topLevel("hotkey"));
    EXPECT_TRUE(control<QLabel>("Label2")->text().contains(u"Another program"_s));
    EXPECT_TRUE(user.seen.isEmpty());
    EXPECT_EQ(bytesOf(folder.setIni()), "[hotkey]\r\nhotkey=Ctrl+A\r\n");
}

TEST_F(HotkeyTest, aTakenCombinationIsTriedAgainAsItWasConfirmed)
{
    platform.hotkey().succeeds = false;
    startWith("Alt+Z");
    open();
    option(1)->click();
    platform.log.clear();
    EXPECT_TRUE(waitUntil([this] { return !hotkeyCalls().isEmpty(); }));
    EXPECT_EQ(hotkeyCalls().first(), u"hotkey register 1 90"_s);
}

TEST_F(HotkeyTest, aHiddenLauncherIsShownWithTheKeywordBoxFocusedAndThenHidden)
{
    startWith("Alt+Z");
    ui.hideLauncher();
    Q_EMIT platform.hotkey().fired(1);
    EXPECT_TRUE(launcherVisible());
    EXPECT_EQ(ui.window()->focusWidget(), find("Text8"));
    Q_EMIT platform.hotkey().fired(1);
    EXPECT_FALSE(launcherVisible());
}

TEST_F(HotkeyTest, aLauncherThatIsShownWhereNobodySeesItIsFetched)
{
    startWith("Alt+Z");
    ui.hideLauncher();
    Q_EMIT platform.hotkey().fired(1);
    platform.windows().windowsAreOnScreen = false;
    platform.log.clear();
    Q_EMIT platform.hotkey().fired(1);
    EXPECT_TRUE(launcherVisible());
    const QString fetched = u"window bring here %1"_s.arg(static_cast<WindowHandle>(ui.window()->winId()));
    EXPECT_TRUE(platform.log.lines().contains(fetched)) << qPrintable(platform.log.lines().join(u'\n'));
}

TEST_F(HotkeyTest, registeringTwiceLeavesOneRegistration)
{
    startWith("Alt+Z");
    platform.log.clear();
    press("Command1");
    press("Command1");
    EXPECT_EQ(hotkeyCalls(),
        QStringList({u"hotkey unregister"_s, u"hotkey register 1 90"_s, u"hotkey unregister"_s,
            u"hotkey register 1 90"_s}));
}

TEST_F(HotkeyTest, unregisteringTwiceIsSafe)
{
    startWith("Alt+Z");
    platform.log.clear();
    press("Command2");
    press("Command2");
    EXPECT_EQ(hotkeyCalls(), QStringList(u"hotkey unregister"_s));
}

TEST_F(HotkeyTest, theFirstMainButtonSwitchesOnAndOff)
{
    startWith("Alt+Z");
    platform.log.clear();
    auto *button = control<QPushButton>("cmdMain0");
    EXPECT_EQ(button->text(), u"OK"_s);
    button->click();
    EXPECT_EQ(button->text(), u"NO"_s);
    EXPECT_EQ(hotkeyCalls().last(), u"hotkey register 1 90"_s);
    for (QWidget *choice : {static_cast<QWidget *>(option(0)), static_cast<QWidget *>(option(2)),
             static_cast<QWidget *>(letter()), control<QWidget>("cmdMain1")})
        EXPECT_FALSE(choice->isEnabled());
    button->click();
    EXPECT_EQ(button->text(), u"OK"_s);
    EXPECT_EQ(hotkeyCalls().last(), u"hotkey unregister"_s);
    EXPECT_TRUE(option(1)->isEnabled());
    EXPECT_TRUE(letter()->isEnabled());
}

TEST_F(HotkeyTest, closingForGoodGivesTheHotkeyUp)
{
    startWith("Alt+Z");
    open();
    platform.log.clear();
    press("cmdMain1");
    EXPECT_EQ(hotkeyCalls(), QStringList(u"hotkey unregister"_s));
    EXPECT_FALSE(topLevel("hotkey"));
    EXPECT_TRUE(find<QLabel>("hint")->isVisible());

    open();
    EXPECT_EQ(letter()->currentText(), u"Z"_s);
}

TEST_F(HotkeyTest, hidingKeepsTheHotkey)
{
    startWith("Alt+Z");
    open();
    platform.log.clear();
    press("Image1");
    EXPECT_FALSE(topLevel("hotkey"));
    EXPECT_TRUE(hotkeyCalls().isEmpty());
}

TEST_F(HotkeyTest, theThreePicturesAreTheSame)
{
    open();
    QImage pictures[3];
    QWidget *buttons[]{control<QWidget>("Image1"), find("Image9"), find("Image11")};
    for (int i = 0; i < 3; ++i)
        pictures[i] = buttons[i]->grab().toImage();
    EXPECT_EQ(pictures[0], pictures[1]);
    EXPECT_EQ(pictures[0], pictures[2]);
}

TEST_F(HotkeyTest, draggingTheBackgroundMovesTheWindow)
{
    open();
    QWidget *window = topLevel("hotkey");
    const QPoint before = window->pos();
    mouse(window, QEvent::MouseButtonPress, {3, 3}, Qt::LeftButton, Qt::LeftButton);
    mouse(window, QEvent::MouseMove, {13, 23}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(window->pos() - before, QPoint(10, 20));
}

} // namespace plum
