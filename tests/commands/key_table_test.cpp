#include "commands/key_table.h"
#include "support/printers.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(KeyTable, KnowsEveryKeyByOneName)
{
    const QStringList names = keyNames();
    EXPECT_EQ(QSet<QString>(names.begin(), names.end()).size(), names.size());
    for (const QString &name : names) {
        const std::optional<NamedKey> key = keyNamed(name);
        ASSERT_TRUE(key) << name.toStdString();
        EXPECT_NE(key->virtualKey, 0) << name.toStdString();
    }
}

TEST(KeyTable, NumbersKeysAsTheSystemDoes)
{
    const QList<std::pair<QString, int>> known{{u"a"_s, 65}, {u"z"_s, 90}, {u"0"_s, 48}, {u"9"_s, 57},
        {u"f1"_s, 112}, {u"f24"_s, 135}, {u"num_0"_s, 96}, {u"num_9"_s, 105}, {u"esc"_s, 27}, {u"tab"_s, 9},
        {u"space"_s, 32}, {u"delete"_s, 46}, {u"home"_s, 36}, {u"up"_s, 38}, {u"comma"_s, 188},
        {u"quote"_s, 222}, {u"media_play"_s, 179}, {u"volume_mute"_s, 173}};
    for (const auto &[name, code] : known)
        EXPECT_EQ(keyNamed(name)->virtualKey, code) << name.toStdString();
}

TEST(KeyTable, NamesAreExact)
{
    for (const QString &name : {u""_s, u"A"_s, u"Esc"_s, u"f0"_s, u"f01"_s, u"f25"_s, u"num_10"_s, u"num_"_s,
             u"ä"_s, u","_s, u"escape"_s})
        EXPECT_FALSE(keyNamed(name)) << name.toStdString();
}

TEST(KeyTable, TwinsOfNumberPadKeysAreExtended)
{
    EXPECT_TRUE(keyNamed(u"left")->isExtended);
    EXPECT_TRUE(keyNamed(u"num_divide")->isExtended);
    EXPECT_FALSE(keyNamed(u"num_5")->isExtended);
    EXPECT_FALSE(keyNamed(u"enter")->isExtended);
}
