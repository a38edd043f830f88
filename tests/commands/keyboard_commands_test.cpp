#include "commands/keyboard_commands.h"
#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

class KeyboardScript : public testing::Test
{
protected:
    recording::ScriptBench bench;
};

QStringList tap(int code)
{
    return {u"key %1 1"_s.arg(code), u"key %1 2"_s.arg(code), u"wait 10"_s};
}

// What `keyboard.send` does up to the point where the clipboard is put back.
QStringList pasted(const QString &text)
{
    return {u"wait 100"_s, u"clipboard set "_s + text, u"wait 100"_s, u"key 17 0"_s, u"key 86 0"_s,
        u"key 17 2"_s, u"key 86 2"_s, u"wait 100"_s};
}

// A text that unscrambles to `text` with the two-digit key `key`.
QString scrambled(const QString &text, int key)
{
    const QString digits = u"%1"_s.arg(key, 2, 10, QChar(u'0'));
    QString whole = QString(10, u'.') + digits[0] + QString(15, u'.') + digits[1] + QString(3, u'.');
    for (const QChar character : text)
        whole += QChar(static_cast<char16_t>(character.unicode() ^ key));
    return whole;
}

} // namespace

TEST_F(KeyboardScript, KeyTapsEachKeyInOrder)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key \"a\",\"b\""_s), tap(65) + tap(66));
}

TEST_F(KeyboardScript, KeySendsCodeZeroForNamesThatYieldNothing)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key \"z\""_s), tap(0));
    EXPECT_EQ(bench.eventsOf(u"keyboard.key \"esc\""_s), tap(0));
    EXPECT_EQ(bench.eventsOf(u"keyboard.key \"BACKSPACE\""_s), tap(0));
    EXPECT_EQ(bench.eventsOf(u"keyboard.key \"1\""_s), tap(0));
}

TEST_F(KeyboardScript, KeyIgnoresLetterCase)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key \"Shift\""_s), tap(16));
}

TEST_F(KeyboardScript, HotkeyPressesAllAndReleasesThemInTheSameOrder)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.hotkey \"ctrl\",\"shift\",\"s\""_s),
        (QStringList{
            u"key 17 0"_s, u"key 16 0"_s, u"key 83 0"_s, u"key 17 2"_s, u"key 16 2"_s, u"key 83 2"_s}));
}

TEST_F(KeyboardScript, AnItemIsCutAtTheFirstColon)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.hotkey \"ctrl\":anything,\"c\""_s),
        (QStringList{u"key 17 0"_s, u"key 67 0"_s, u"key 17 2"_s, u"key 67 2"_s}));
}

TEST_F(KeyboardScript, AnItemMayBeAVariable)
{
    bench.run({u"set.k \"b\""_s, u"keyboard.key \"a\",set.k,set.c"_s});
    EXPECT_EQ(bench.events().sliced(2), tap(65) + tap(66) + tap(67));
}

TEST_F(KeyboardScript, AnUnquotedNameIsEmptyAndThereforeZ)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key a"_s), tap(90));
    EXPECT_EQ(bench.eventsOf(u"keyboard.key ,"_s), tap(90) + tap(90));
}

TEST_F(KeyboardScript, AListWithoutItemsPressesNothing)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key"_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"keyboard.hotkey "_s), QStringList());
}

TEST_F(KeyboardScript, AListIsSplitBeforeItsQuotesAreLookedAt)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.hotkey \"ctrl,c\""_s),
        (QStringList{u"key 90 0"_s, u"key 90 0"_s, u"key 90 2"_s, u"key 90 2"_s}));
}

TEST_F(KeyboardScript, KeyDownAndKeyUpAreOneEvent)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_down \"shift\""_s), QStringList{u"key 16 0"_s});
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_up \"shift\""_s), QStringList{u"key 16 2"_s});
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_down \"esc\""_s), QStringList{u"key 0 0"_s});
}

TEST_F(KeyboardScript, KeyDownWithAnEmptyNameSendsTheCodeOfZ)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_down"_s), QStringList{u"key 90 0"_s});
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_up \"\""_s), QStringList{u"key 90 2"_s});
}

TEST_F(KeyboardScript, KeyDownAndKeyUpAreCutAtTheFirstColonOnly)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_down \"a\":\"b\""_s), QStringList{u"key 65 0"_s});
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_up \"a\":\"b\""_s), QStringList{u"key 65 2"_s});
    EXPECT_EQ(bench.eventsOf(u"keyboard.key_down \"a\",\"b\""_s), QStringList{u"key 0 0"_s});
}

TEST_F(KeyboardScript, SendPutsTheOldTextBack)
{
    bench.platform.clipboard().content = u"old"_s;
    EXPECT_EQ(
        bench.eventsOf(u"keyboard.send \"new\""_s), pasted(u"new"_s) + QStringList{u"clipboard set old"_s});
    EXPECT_EQ(bench.platform.clipboard().content, u"old"_s);
}

TEST_F(KeyboardScript, SendLeavesAnEmptyClipboardEmpty)
{
    EXPECT_EQ(
        bench.eventsOf(u"keyboard.send \"new\""_s), pasted(u"new"_s) + QStringList{u"clipboard clear"_s});
    EXPECT_EQ(bench.platform.clipboard().content, QString());
}

TEST_F(KeyboardScript, SendWaitsForAReceiverThatIsLateBeforeItPutsTheOldTextBack)
{
    auto &clipboard = bench.platform.clipboard();
    clipboard.content = u"old"_s;
    quint64 taken = 7;
    clipboard.askedHowOftenTaken = [&] { return std::optional(taken); };
    QString received;
    bench.waiter.onWait = [&] {
        if (bench.events().last() != u"wait 500"_s)
            return;
        received = clipboard.content;
        ++taken;
    };
    EXPECT_EQ(bench.eventsOf(u"keyboard.send \"new\""_s),
        pasted(u"new"_s) + (QStringList{u"wait 500"_s, u"clipboard set old"_s}));
    EXPECT_EQ(received, u"new");
}

TEST_F(KeyboardScript, SendWaitsNoLongerForAReceiverThatHasTakenTheText)
{
    auto &clipboard = bench.platform.clipboard();
    quint64 taken = 7;
    clipboard.askedHowOftenTaken = [&] {
        // Once the keys are down.
        return std::optional(bench.events().contains(u"key 86 0"_s) ? taken + 1 : taken);
    };
    EXPECT_EQ(
        bench.eventsOf(u"keyboard.send \"new\""_s), pasted(u"new"_s) + QStringList{u"clipboard clear"_s});
}

TEST_F(KeyboardScript, SendDoesNotTakeAWatcherOfTheClipboardForTheReceiver)
{
    auto &clipboard = bench.platform.clipboard();
    clipboard.askedHowOftenTaken
        = [&] { return std::optional<quint64>(clipboard.content == u"new" ? 1 : 0); };
    EXPECT_EQ(bench.eventsOf(u"keyboard.send \"new\""_s),
        pasted(u"new"_s) + (QStringList{u"wait 500"_s, u"clipboard clear"_s}));
}

TEST_F(KeyboardScript, SendMayPasteTheClipboardItself)
{
    bench.platform.clipboard().content = u"old"_s;
    EXPECT_EQ(bench.eventsOf(u"keyboard.send <+?+>+(os.get_clipboard)"_s),
        pasted(u"<old>"_s) + QStringList{u"clipboard set old"_s});
}

TEST_F(KeyboardScript, SendIsCutAtTheFirstColonUnlessQuotedAsAWhole)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.send \"a\":\"b\""_s)[1], u"clipboard set a"_s);
    EXPECT_EQ(bench.eventsOf(u"keyboard.send \"a:b\""_s)[1], u"clipboard set a:b"_s);
    EXPECT_EQ(bench.eventsOf(u"keyboard.send a.b:c"_s)[1], u"clipboard set a.b"_s);
}

TEST_F(KeyboardScript, SendKeepsCommasAndLineEnds)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.send \"a,b\""_s)[1], u"clipboard set a,b"_s);
    EXPECT_EQ(bench.eventsOf(u"keyboard.send x+?+y.+(str.r)"_s)[1], u"clipboard set x\r\ny."_s);
}

TEST_F(KeyboardScript, EnsendTypesNothing)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.ensend \""_s + scrambled(u"hello"_s, 42) + u'"'), QStringList());
}

TEST_F(KeyboardScript, EnsendWithoutAKeyIsAnError)
{
    EXPECT_EQ(raisedBy([&] { bench.run({u"keyboard.ensend \"short\""_s}); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { bench.run({u"keyboard.ensend"_s}); }), RunTimeError::TypeMismatch);
    // The key's second digit stands behind a colon, where the text has ended.
    EXPECT_EQ(raisedBy([&] {
        bench.run({u"keyboard.ensend \""_s + QString(10, u'1') + u"1\":\""_s + QString(40, u'1') + u'"'});
    }),
        0)
        << "one digit is a key too";
    EXPECT_EQ(raisedBy([&] {
        bench.run({u"keyboard.ensend \""_s + QString(10, u'1') + u"\":\""_s + QString(40, u'1') + u'"'});
    }),
        RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { bench.run({u"keyboard.ensend \""_s + QString(40, u'x') + u'"'}); }),
        RunTimeError::TypeMismatch);
}

TEST_F(KeyboardScript, UnknownCommandsDoNothing)
{
    EXPECT_EQ(bench.eventsOf(u"keyboard.press \"a\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"keyboard.Key \"a\""_s), QStringList());
}

TEST(Unscramble, XorsTheLowByteOfEachCharacterFromTheThirtyFirstOn)
{
    EXPECT_EQ(unscramble(scrambled(u"hello, W\u00f6rld \u4e2d"_s, 42)), u"hello, W\u00f6rld \u4e2d"_s);
    EXPECT_EQ(unscramble(scrambled(u"plain"_s, 0)), u"plain"_s);
    EXPECT_EQ(
        unscramble(QString(10, u'.') + u'0' + QString(15, u'.') + u'1' + QString(3, u'.') + u"\u4e2d"_s),
        u"\u4e2c"_s)
        << "the high byte stays";
}

TEST(Unscramble, NothingAfterTheThirtiethCharacterIsEmpty)
{
    EXPECT_EQ(unscramble(scrambled(QString(), 99)), QString());
}

TEST(Unscramble, TheKeyIsANumberFromTwoCharacters)
{
    const auto withKey = [](char16_t first, char16_t second) {
        return QString(10, u'.') + QChar(first) + QString(15, u'.') + QChar(second) + QString(4, u'.');
    };
    EXPECT_EQ(unscramble(withKey(u' ', u'1')), QString(QChar(u'.' ^ 1)));
    EXPECT_EQ(raisedBy([&] { unscramble(withKey(u'x', u'1')); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(raisedBy([&] { unscramble(withKey(u'-', u'1')); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([&] { unscramble(QString()); }), RunTimeError::TypeMismatch);
}
