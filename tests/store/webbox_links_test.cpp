#include "store/webbox.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ShellUrl, SplitsBehindTheSecondHash)
{
    EXPECT_EQ(plum::webbox::ShellUrl(u"#open#http://a/#b"_s), (QStringList{u"#open#"_s, u"http://a/#b"_s}));
    EXPECT_EQ(plum::webbox::ShellUrl(u"a##"_s), (QStringList{u"a##"_s, QString()}));
}

TEST(ShellUrl, ATextWithFewerThanTwoHashesGivesNothing)
{
    EXPECT_TRUE(plum::webbox::ShellUrl(u"a#b"_s).isEmpty());
    EXPECT_TRUE(plum::webbox::ShellUrl(u"ab"_s).isEmpty());
    EXPECT_TRUE(plum::webbox::ShellUrl({}).isEmpty());
}

TEST(RepUrl, TurnsThePrefixAroundAndReturnsTheRest)
{
    QString prefix = u"C:\\plum\\"_s;
    EXPECT_EQ(plum::webbox::repurl(u"file:///C:/plum/a/C:/plum/b"_s, prefix), u"a/C:/plum/b"_s);
    EXPECT_EQ(prefix, u"C:/plum/"_s);
}

TEST(RepUrl, APrefixThatIsNotThereLeavesNothing)
{
    QString prefix = u"x\\"_s;
    EXPECT_EQ(plum::webbox::repurl(u"http://a"_s, prefix), QString());
    EXPECT_EQ(prefix, u"x/"_s);
}
