#include "contract/contract_test.h"

#include "platform/keyboard.h"

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

constexpr quint8 shift = 16;
constexpr quint8 control = 17;
constexpr quint8 alt = 18;

class KeyboardPort : public ContractTest
{
protected:
    void SetUp() override
    {
        ContractTest::SetUp();
        if (!platform)
            return;
        window = openWindow();
        ASSERT_TRUE(window);
    }

    Keyboard &keyboard() { return platform->keyboard(); }

    // What all keys so far have typed.
    QString typed() const
    {
        QString text;
        for (const QString &line : window->seen({u"key down"_s}))
            text += line.section(u' ', 4);
        return text;
    }

    static QString code(Qt::Key key) { return QString::number(key, 16); }

    std::unique_ptr<PeerWindow> window;
};

} // namespace

TEST_F(KeyboardPort, typesEveryLetter)
{
    QStringList expected;
    for (quint8 letter = 'A'; letter <= 'Z'; ++letter) {
        if (letter == 'H') // makes the window hang
            continue;
        tap(letter);
        const QString text = QString(QLatin1Char(char(letter))).toLower();
        expected += u"key down %1 0 %2"_s.arg(int(letter), 0, 16).arg(text);
        expected += u"key up %1 0 %2"_s.arg(int(letter), 0, 16).arg(text);
    }
    EXPECT_EQ(events(*window, {u"key"_s}, expected.size(), 5), expected);
}

TEST_F(KeyboardPort, typesDigits)
{
    QStringList expected;
    for (quint8 digit = '0'; digit <= '9'; ++digit) {
        tap(digit);
        expected += u"key down %1 0 %2"_s.arg(int(digit), 0, 16).arg(QLatin1Char(char(digit)));
    }
    EXPECT_EQ(events(*window, {u"key down"_s}, expected.size(), 5), expected);
}

TEST_F(KeyboardPort, pressesNamedKeys)
{
    struct Named
    {
        quint8 virtualKey;
        Qt::Key key;
    };
    for (const auto &[virtualKey, key] : std::initializer_list<Named>{{8, Qt::Key_Backspace},
             {13, Qt::Key_Return}, {27, Qt::Key_Escape}, {32, Qt::Key_Space}, {33, Qt::Key_PageUp},
             {34, Qt::Key_PageDown}, {35, Qt::Key_End}, {36, Qt::Key_Home}, {37, Qt::Key_Left},
             {38, Qt::Key_Up}, {39, Qt::Key_Right}, {40, Qt::Key_Down}, {45, Qt::Key_Insert},
             {46, Qt::Key_Delete}, {112, Qt::Key_F1}, {122, Qt::Key_F11}, {123, Qt::Key_F12}}) {
        window->forget();
        tap(virtualKey);
        const QStringList seen = events(*window, {u"key"_s}, 2, 3);
        EXPECT_EQ(seen, (QStringList{u"key down "_s + code(key), u"key up "_s + code(key)}))
            << int(virtualKey);
    }
}

TEST_F(KeyboardPort, holdsModifiers)
{
    struct Held
    {
        quint8 virtualKey;
        Qt::Key key;
        int modifiers;
    };
    for (const auto &[virtualKey, key, modifiers] : std::initializer_list<Held>{
             {shift, Qt::Key_Shift, 2}, {control, Qt::Key_Control, 4}, {alt, Qt::Key_Alt, 8}}) {
        window->forget();
        keyboard().keyEvent(virtualKey, 0);
        tap('Q');
        keyboard().keyEvent(virtualKey, Keyboard::KeyUp);
        const QStringList seen = events(*window, {u"key"_s}, 4, 4);
        ASSERT_EQ(seen.size(), 4);
        EXPECT_EQ(seen[0].section(u' ', 0, 2), u"key down "_s + code(key));
        EXPECT_EQ(seen[1], u"key down 51 %1"_s.arg(modifiers));
        EXPECT_EQ(seen[2], u"key up 51 %1"_s.arg(modifiers));
        EXPECT_EQ(seen[3].section(u' ', 0, 2), u"key up "_s + code(key));
    }
    // A capital is its letter with shift.
    window->forget();
    keyboard().keyEvent(shift, 0);
    tap('Q');
    keyboard().keyEvent(shift, Keyboard::KeyUp);
    EXPECT_TRUE(events(*window, {u"key"_s}, 4, 5).contains(u"key down 51 2 Q"_s));
}

TEST_F(KeyboardPort, makesNoDifferenceOfTheTwinWhereALetterHasNone)
{
    keyboard().keyEvent('A', Keyboard::ExtendedKey);
    keyboard().keyEvent('A', Keyboard::ExtendedKey | Keyboard::KeyUp);
    EXPECT_EQ(events(*window, {u"key"_s}, 2, 5), (QStringList{u"key down 41 0 a"_s, u"key up 41 0 a"_s}));
}

TEST_F(KeyboardPort, takesCodesThatNameNoKey)
{
    for (const int code : {0, 7, 255})
        tap(static_cast<quint8>(code));
    tap('A');
    ASSERT_TRUE(waitUntil([&] { return window->seen({u"key up 41"_s}).size() == 1; }));
    // Nothing that a letter could be mistaken for, and nothing is left pressed.
    EXPECT_EQ(window->seen({u"key down"_s}).last(), u"key down 41 0 a");
}

// The letter H would make the window hang.
TEST_F(KeyboardPort, typesTextsOfAnyCharacters)
{
    const QString text = u"Az 09 (a+b)*2; ~^`'\" @ ßÄé€ Жжщ 你好 😀!"_s;
    EXPECT_TRUE(keyboard().typeText(text));
    EXPECT_TRUE(waitUntil([&] { return typed() == text; })) << qPrintable(typed());
}

// No keyboard has as many keys.
TEST_F(KeyboardPort, typesAThousandDifferentCharactersInTheirOrder)
{
    constexpr char16_t first = 0x4e00;
    constexpr int count = 100;
    constexpr qsizetype atOnce = 32;
    QString text;
    for (char16_t character = first; character < first + count; ++character)
        text += QChar(character);
    for (qsizetype from = 0; from < count; from += atOnce)
        EXPECT_TRUE(keyboard().typeText(QStringView(text).mid(from, atOnce)));
    EXPECT_TRUE(waitUntil([&] { return typed().size() >= count; }));
    EXPECT_EQ(typed(), text);
}

TEST_F(KeyboardPort, typesLineEndsAndTabsWithTheirKeys)
{
    EXPECT_TRUE(keyboard().typeText(u"a\r\nb\nc\rd\te"_s));
    QStringList keys;
    for (const auto key : {Qt::Key_A, Qt::Key_Return, Qt::Key_B, Qt::Key_Return, Qt::Key_C, Qt::Key_Return,
             Qt::Key_D, Qt::Key_Tab, Qt::Key_E})
        keys += code(key);
    const auto seen = [&] {
        QStringList codes;
        for (const QString &line : window->seen({u"key down"_s}))
            codes += line.section(u' ', 2, 2);
        return codes;
    };
    EXPECT_TRUE(waitUntil([&] { return seen() == keys; })) << qPrintable(seen().join(u' '));
}

TEST_F(KeyboardPort, typesUpToWhatIsNoCharacter)
{
    for (const QString &bad : {QString(QChar(0x1b)), QString(QChar(0x7f)), QString(QChar(0xd83d))}) {
        window->forget();
        EXPECT_FALSE(keyboard().typeText(u"ab"_s + bad + u"c"_s));
        EXPECT_TRUE(waitUntil([&] { return typed() == u"ab"_s; })) << qPrintable(typed());
    }
    EXPECT_TRUE(keyboard().typeText({}));
}

// Capitals and characters that the layout lacks change what is held and what keys mean.
TEST_F(KeyboardPort, leavesATextWhereTheCallerLeavesIt)
{
    struct Left
    {
    };
    int asked = 0;
    const auto leaveBeforeTheFourth = [&] {
        if (++asked == 4)
            throw Left();
    };
    EXPECT_THROW(keyboard().typeText(u"aB你Cdef", leaveBeforeTheFourth), Left);
    EXPECT_TRUE(keyboard().typeText(u"z"));
    EXPECT_TRUE(waitUntil([&] { return typed().endsWith(u'z'); }));
    EXPECT_EQ(typed(), u"aB你z");
}

TEST_F(KeyboardPort, letsGoOfWhatItPressed)
{
    keyboard().keyEvent(shift, 0);
    keyboard().keyEvent('A', 0);
    events(*window, {u"key down"_s}, 2, 3);
    keyboard().releaseAll();
    EXPECT_EQ(events(*window, {u"key up"_s}, 2, 2).size(), 2);
    // Nothing is held any more, and nothing is released that was not pressed.
    window->forget();
    keyboard().releaseAll();
    tap('A');
    EXPECT_EQ(events(*window, {u"key"_s}, 2, 5), (QStringList{u"key down 41 0 a"_s, u"key up 41 0 a"_s}));
}

} // namespace plum::contract
