#include "desktop/support/script_test.h"

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class KeyboardScripts : public ScriptTest<EveryManagerTest>
{
};

INSTANTIATE_TEST_SUITE_P(Under, KeyboardScripts, everyManager, managerName);

// Layouts as setxkbmap takes them, and which of them is in force.
struct Layout
{
    const char *names;
    int group;

    friend void PrintTo(const Layout &layout, std::ostream *out)
    {
        *out << layout.names << ", group " << layout.group;
    }
};

std::string layoutName(const testing::TestParamInfo<Layout> &layout)
{
    std::string name = layout.param.names;
    std::ranges::replace(name, ',', '_');
    return name + std::to_string(layout.param.group);
}

class KeyboardLayouts : public ScriptTest<DesktopTest>, public testing::WithParamInterface<Layout>
{
protected:
    void SetUp() override
    {
        startDesktop(u"openbox"_s, QString::fromLatin1(GetParam().names));
        view->lockLayoutGroup(GetParam().group);
        ASSERT_EQ(view->layoutGroup(), GetParam().group);
        m_mapBefore = view->keyboardMap();
    }

    void expectTheKeyboardAsBefore()
    {
        EXPECT_EQ(view->keyboardMap(), m_mapBefore);
        EXPECT_EQ(view->layoutGroup(), GetParam().group);
        EXPECT_EQ(view->keysDown(), std::vector<int>());
    }

private:
    std::vector<xcb_keysym_t> m_mapBefore;
};

INSTANTIATE_TEST_SUITE_P(In, KeyboardLayouts,
    testing::Values(Layout{"us", 0}, Layout{"fr", 0}, Layout{"de", 0}, Layout{"ru", 0}, Layout{"us,ru", 0},
        Layout{"us,ru", 1}),
    layoutName);

// Modifiers as the probe writes them.
constexpr int shift = 2;
constexpr int control = 4;

QString down(int symbol, int modifiers, const QString &text = {})
{
    return u"key down %1 %2%3"_s.arg(symbol, 0, 16).arg(modifiers).arg(text.isEmpty() ? text : u' ' + text);
}

QString up(int symbol, int modifiers, const QString &text = {})
{
    return u"key up %1 %2%3"_s.arg(symbol, 0, 16).arg(modifiers).arg(text.isEmpty() ? text : u' ' + text);
}

} // namespace

TEST_P(KeyboardScripts, tapKeysInOrder)
{
    run({u"keyboard.key \"b\",\"a\""_s});
    ASSERT_TRUE(probe->sees(up('a', 0, u"a"_s)));
    EXPECT_EQ(probe->seen({u"key"_s}),
        (QStringList{down('b', 0, u"b"_s), up('b', 0, u"b"_s), down('a', 0, u"a"_s), up('a', 0, u"a"_s)}));
    EXPECT_TRUE(probe->sees(u"text ba"_s));
}

TEST_P(KeyboardScripts, pressACombinationAndReleaseItInTheSameOrder)
{
    run({u"keyboard.hotkey \"ctrl\",\"shift\",\"s\""_s});
    ASSERT_TRUE(eventually([&] { return probe->seen({u"key up"_s}).size() == 3; }));
    QStringList symbols;
    for (const QString &line : probe->seen({u"key"_s}))
        symbols += line.section(u' ', 1, 2);
    EXPECT_EQ(symbols,
        (QStringList{u"down ffe3"_s, u"down ffe1"_s, u"down 53"_s, u"up ffe3"_s, u"up ffe1"_s, u"up 73"_s}));
}

TEST_P(KeyboardScripts, holdAKeyWhileOthersAreTapped)
{
    run({u"keyboard.key_down \"shift\""_s, u"keyboard.key \"q\",\"\""_s, u"keyboard.key_up \"Shift\""_s,
        u"keyboard.key \"x\""_s});
    EXPECT_TRUE(probe->sees(u"text QZx"_s));
}

TEST_P(KeyboardScripts, sendNothingForKeysWithoutACode)
{
    run({u"keyboard.key \"z\",\"esc\",\"BACKSPACE\",\"1\",\"a\""_s});
    ASSERT_TRUE(probe->sees(up('a', 0, u"a"_s)));
    EXPECT_EQ(probe->seen({u"key"_s}), (QStringList{down('a', 0, u"a"_s), up('a', 0, u"a"_s)}));
}

TEST_P(KeyboardScripts, selectCopyAndPasteInAnotherProgram)
{
    run({u"keyboard.key \"a\",\"b\""_s, u"keyboard.hotkey \"ctrl\",\"a\""_s,
        u"keyboard.hotkey \"ctrl\",\"c\""_s, u"keyboard.hotkey \"ctrl\",\"v\""_s,
        u"keyboard.hotkey \"ctrl\",\"v\""_s});
    EXPECT_TRUE(probe->sees(u"text abab"_s));
}

TEST_P(KeyboardScripts, pasteATextAndPutTheOldOneBack)
{
    run({u"keyboard.key \"a\",\"b\""_s, u"keyboard.hotkey \"ctrl\",\"a\""_s,
        u"keyboard.hotkey \"ctrl\",\"c\""_s});
    ASSERT_TRUE(eventually([&] { return clipboardText() == "ab"; }));
    run({u"keyboard.send \"Grüße, 你好\""_s});
    EXPECT_TRUE(probe->sees(u"text Grüße, 你好"_s));
    EXPECT_TRUE(eventually([&] { return clipboardText() == "ab"; })) << clipboardText().toStdString();
}

TEST_P(KeyboardScripts, pasteATextWithAnEmptyClipboard)
{
    run({u"keyboard.send \"one:two\""_s});
    EXPECT_TRUE(probe->sees(u"text one:two"_s));
    EXPECT_TRUE(eventually([&] { return clipboardText().isEmpty(); })) << clipboardText().toStdString();
}

TEST_P(KeyboardLayouts, giveTheLetterThatTheScriptNames)
{
    QStringList items;
    QStringList wanted;
    for (char letter = 'a'; letter <= 'y'; ++letter) {
        items += u"\"%1\""_s.arg(QLatin1Char(letter));
        wanted += {down(letter, 0, QChar(QLatin1Char(letter))), up(letter, 0, QChar(QLatin1Char(letter)))};
    }
    items += u"\"\""_s; // the empty name is the letter z
    wanted += {down('z', 0, u"z"_s), up('z', 0, u"z"_s)};
    run({u"keyboard.key %1"_s.arg(items.join(u','))});
    EXPECT_TRUE(probe->sees(wanted.back()));
    EXPECT_EQ(probe->seen({u"key"_s}), wanted);
    EXPECT_TRUE(probe->sees(u"text abcdefghijklmnopqrstuvwxyz"_s));
    expectTheKeyboardAsBefore();
}

TEST_P(KeyboardLayouts, giveCombinationsThatProgramsUnderstand)
{
    run({u"keyboard.key \"a\",\"m\""_s, u"keyboard.hotkey \"ctrl\",\"a\""_s,
        u"keyboard.hotkey \"ctrl\",\"x\""_s, u"keyboard.hotkey \"ctrl\",\"v\""_s,
        u"keyboard.hotkey \"ctrl\",\"v\""_s, u"keyboard.hotkey \"ctrl\",\"z\""_s});
    EXPECT_TRUE(probe->sees(u"text amam"_s));
    ASSERT_TRUE(eventually([&] { return probe->seen({u"key up ffe3"_s}).size() == 5; }));
    for (const char letter : {'a', 'x', 'v'})
        EXPECT_TRUE(probe->sees(down(letter, control))) << letter;
    expectTheKeyboardAsBefore();
}

TEST_P(KeyboardLayouts, giveACapitalLetterWithShift)
{
    run({u"keyboard.hotkey \"shift\",\"q\""_s, u"keyboard.hotkey \"shift\",\"m\""_s});
    EXPECT_TRUE(probe->sees(down('Q', shift, u"Q"_s)));
    EXPECT_TRUE(probe->sees(u"text QM"_s));
    expectTheKeyboardAsBefore();
}

TEST_P(KeyboardLayouts, pasteText)
{
    run({u"keyboard.send \"Aé%1:\""_s.arg(QChar(u'ж'))});
    EXPECT_TRUE(probe->sees(u"text Aéж:"_s));
    expectTheKeyboardAsBefore();
}

TEST_P(KeyboardLayouts, endALineWithEnter)
{
    run({u"keyboard.key \"enter\""_s});
    EXPECT_TRUE(probe->sees(up(0xff0d, 0)));
    expectTheKeyboardAsBefore();
}

} // namespace plum
