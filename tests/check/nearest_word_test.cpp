#include "check/findings/nearest_word.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

const QStringList words{u"click"_s, u"d_click"_s, u"move"_s, u"get_xy"_s};

TEST(NearestWord, findsAnotherLetterCase)
{
    EXPECT_EQ(nearestWord(u"CLICK"_s, words), u"click"_s);
}

TEST(NearestWord, findsAMissingADoubledAWrongAndASwappedLetter)
{
    EXPECT_EQ(nearestWord(u"clik"_s, words), u"click"_s);
    EXPECT_EQ(nearestWord(u"cliick"_s, words), u"click"_s);
    EXPECT_EQ(nearestWord(u"mova"_s, words), u"move"_s);
    EXPECT_EQ(nearestWord(u"mvoe"_s, words), u"move"_s);
}

TEST(NearestWord, findsNothingFarAway)
{
    EXPECT_EQ(nearestWord(u"lock_screen"_s, words), QString());
    EXPECT_EQ(nearestWord(QString(), words), QString());
}

TEST(NearestWord, asksInASentence)
{
    EXPECT_EQ(didYouMean(u"mvoe"_s, words, u"mouse."_s), u" Did you mean \"mouse.move\"?"_s);
    EXPECT_EQ(didYouMean(u"lock_screen"_s, words), QString());
}

} // namespace
} // namespace plum
