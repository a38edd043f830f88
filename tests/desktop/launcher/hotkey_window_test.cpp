#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The window in which the hotkey is chosen.
class HotkeyWindowTest : public LauncherDesktop
{
protected:
    void openWindow()
    {
        click(u"frmSet/menuimg"_s);
        ASSERT_TRUE(appears(u"hotkey/hotkey"_s));
    }

    // With the keyboard: to the letters and down them.
    void chooseLetter(const QString &letter)
    {
        for (int steps = 0; steps < 12 && !hasFocus(u"hotkey/cboLetter"_s); ++steps) {
            const QString before = focused();
            hands->key(u"Tab"_s);
            ASSERT_TRUE(eventually([&] { return focused() != before; }));
        }
        ASSERT_TRUE(hasFocus(u"hotkey/cboLetter"_s));
        hands->key(u"Home"_s);
        for (int steps = letter.front().unicode() - 'A'; steps > 0; --steps)
            hands->key(u"Down"_s);
        ASSERT_TRUE(shows(u"hotkey/cboLetter"_s, letter));
    }

    bool isTaken(char letter, uint16_t modifier) { return view->isKeyTaken(letter, modifier); }
    QByteArray setting() const { return read(u"config/load/set.ini"_s); }
};

} // namespace

TEST_F(HotkeyWindowTest, choosesALetterFromTheListAndEscClosesTheListAlone)
{
    const QString list = u"dropped/list"_s;
    startLauncher();
    openWindow();
    click(u"hotkey/cboLetter"_s);
    ASSERT_TRUE(appears(list));
    hands->key(u"m"_s);
    ASSERT_TRUE(shows(list, u"M"_s));
    hands->key(u"Return"_s);
    ASSERT_TRUE(disappears(list));
    EXPECT_TRUE(shows(u"hotkey/cboLetter"_s, u"M"_s));

    click(u"hotkey/cboLetter"_s);
    ASSERT_TRUE(appears(list));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(disappears(list));
    EXPECT_TRUE(isShown(u"hotkey/hotkey"_s));
    EXPECT_EQ(textOf(u"hotkey/cboLetter"_s), u"M"_s);
}

TEST_F(HotkeyWindowTest, showsTheSavedHotkeyAndChoosesAnother)
{
    startLauncher();
    openWindow();
    EXPECT_TRUE(see(u"hotkey/optKey0"_s).checked);
    EXPECT_EQ(textOf(u"hotkey/cboLetter"_s), u"Z"_s);
    QStringList letters;
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        letters += QString(QLatin1Char(letter));
    EXPECT_EQ(see(u"hotkey/cboLetter"_s).items, letters);
    for (const auto &[option, caption] : {std::pair{u"optKey0"_s, u"Alt"_s},
             std::pair{u"optKey1"_s, u"Ctrl"_s}, std::pair{u"optKey2"_s, u"Shift"_s}})
        EXPECT_EQ(textOf(u"hotkey/"_s + option), caption);

    struct Row
    {
        QString option;
        QString letter;
        uint16_t modifier;
        QByteArray saved;
    };
    for (const Row &row : {Row{u"optKey1"_s, u"Q"_s, XCB_MOD_MASK_CONTROL, "Ctrl+Q"},
             Row{u"optKey2"_s, u"B"_s, XCB_MOD_MASK_SHIFT, "Shift+B"},
             Row{u"optKey0"_s, u"J"_s, XCB_MOD_MASK_1, "Alt+J"}}) {
        click(u"hotkey/"_s + row.option);
        EXPECT_TRUE(eventually([&] { return see(u"hotkey/"_s + row.option).checked; }));
        chooseLetter(row.letter);
        click(u"hotkey/hotok"_s);
        ASSERT_TRUE(disappears(u"hotkey/hotkey"_s));
        EXPECT_TRUE(eventually([&] { return setting() == "[hotkey]\r\nhotkey=" + row.saved + "\r\n"; }))
            << setting().toStdString();
        EXPECT_FALSE(isTaken('z', XCB_MOD_MASK_1));
        const char letter = static_cast<char>(row.letter.front().toLower().toLatin1());
        EXPECT_TRUE(isTaken(letter, row.modifier));

        // It works at once.
        const QString combination = QString::fromLatin1(row.saved).toLower();
        hands->key(combination);
        EXPECT_TRUE(disappears(u"frmSet/frmSet"_s)) << row.saved.toStdString();
        hands->key(combination);
        EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
        openWindow();
    }
}

TEST_F(HotkeyWindowTest, eachButtonDoesWhatItSays)
{
    startLauncher();
    openWindow();
    const auto expectTaken
        = [&](bool taken) { EXPECT_TRUE(eventually([&] { return isTaken('z', XCB_MOD_MASK_1) == taken; })); };
    // Turn off and on.
    click(u"hotkey/Command2"_s);
    expectTaken(false);
    click(u"hotkey/Command1"_s);
    expectTaken(true);

    // The first main button shows "OK" while the choice is open.
    EXPECT_EQ(textOf(u"hotkey/cmdMain0"_s), u"OK"_s);
    const auto expectChoice = [&](bool open) {
        for (const QString &control :
            {u"optKey0"_s, u"optKey1"_s, u"optKey2"_s, u"cboLetter"_s, u"cmdMain1"_s})
            EXPECT_TRUE(eventually([&] { return see(u"hotkey/"_s + control).enabled == open; }))
                << control.toStdString();
    };
    click(u"hotkey/cmdMain0"_s);
    EXPECT_TRUE(shows(u"hotkey/cmdMain0"_s, u"NO"_s));
    expectChoice(false);
    expectTaken(true);
    click(u"hotkey/cmdMain0"_s);
    EXPECT_TRUE(shows(u"hotkey/cmdMain0"_s, u"OK"_s));
    expectChoice(true);
    expectTaken(false);
    click(u"hotkey/cmdMain0"_s);
    EXPECT_TRUE(shows(u"hotkey/cmdMain0"_s, u"NO"_s));
    expectTaken(true);

    // Hiding keeps the hotkey, by the picture and by Esc.
    click(u"hotkey/Image1"_s);
    ASSERT_TRUE(disappears(u"hotkey/hotkey"_s));
    expectTaken(true);
    openWindow();
    EXPECT_EQ(textOf(u"hotkey/cmdMain0"_s), u"NO"_s);
    hands->key(u"Escape"_s);
    ASSERT_TRUE(disappears(u"hotkey/hotkey"_s));
    expectTaken(true);

    // So does the window manager's way to close a window.
    openWindow();
    hands->key(u"alt+F4"_s);
    ASSERT_TRUE(disappears(u"hotkey/hotkey"_s));
    expectTaken(true);

    // Closing for good gives the hotkey up, not the setting.
    openWindow();
    click(u"hotkey/cmdMain0"_s);
    expectChoice(true);
    click(u"hotkey/Command1"_s);
    expectTaken(true);
    click(u"hotkey/cmdMain1"_s);
    ASSERT_TRUE(disappears(u"hotkey/hotkey"_s));
    expectTaken(false);
    EXPECT_EQ(setting(), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    openWindow();
    EXPECT_TRUE(see(u"hotkey/optKey0"_s).checked);
}

TEST_F(HotkeyWindowTest, itsBackgroundDragsIt)
{
    startLauncher();
    openWindow();
    const QRect before = stillControl(u"hotkey/hotkey"_s).place;
    dragWindow(u"hotkey"_s, before.bottomLeft() + QPoint(8, -8), {70, 90});
}

TEST_F(HotkeyWindowTest, aCombinationOfAnotherProgramIsSaidInWords)
{
    startLauncher();
    openWindow();
    ASSERT_TRUE(view->takeKey('k', XCB_MOD_MASK_1));
    chooseLetter(u"K"_s);
    click(u"hotkey/hotok"_s);
    EXPECT_TRUE(eventually([&] { return textOf(u"hotkey/Label2"_s).startsWith(u"Another program uses"_s); }));
    EXPECT_TRUE(isShown(u"hotkey/hotkey"_s));
}

TEST_F(HotkeyWindowTest, aNewProgramFolderHasNoHotkeyAndOffersOne)
{
    QFile::remove(programFolder() + u"/config/load/set.ini"_s);
    startLauncher();
    EXPECT_FALSE(isTaken('z', XCB_MOD_MASK_1));
    EXPECT_FALSE(QFile::exists(programFolder() + u"/config/load/set.ini"_s));
    ASSERT_TRUE(isShown(u"frmSet/hint"_s));
    const QRect hint = see(u"frmSet/hint"_s).place;
    hands->click({hint.left() + 130, hint.center().y()});
    ASSERT_TRUE(appears(u"hotkey/hotkey"_s));
    EXPECT_FALSE(see(u"hotkey/optKey0"_s).checked || see(u"hotkey/optKey1"_s).checked
        || see(u"hotkey/optKey2"_s).checked);
    EXPECT_EQ(textOf(u"hotkey/cboLetter"_s), QString());

    click(u"hotkey/optKey1"_s);
    EXPECT_TRUE(eventually([&] { return see(u"hotkey/optKey1"_s).checked; }));
    chooseLetter(u"Y"_s);
    click(u"hotkey/hotok"_s);
    ASSERT_TRUE(disappears(u"hotkey/hotkey"_s));
    EXPECT_EQ(setting(), "[hotkey]\r\nhotkey=Ctrl+Y\r\n");
    EXPECT_TRUE(shows(u"frmSet/hint"_s, u"Ctrl+Y shows Plum"_s));
}

} // namespace plum
