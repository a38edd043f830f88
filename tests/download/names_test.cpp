#include "download/byte_size_text.h"
#include "download/numbered_name.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::byteSizeText;
using plum::NumberedName;

TEST(NumberedName, StandsBeforeTheExtension)
{
    EXPECT_EQ(NumberedName(u"C:\\d\\a.wfp"_s, 2), u"C:\\d\\a(2).wfp"_s);
    EXPECT_EQ(NumberedName(u"C:\\d\\a.b.wfp"_s, 10), u"C:\\d\\a.b(10).wfp"_s);
}

TEST(NumberedName, StandsAtTheEndWithoutExtension)
{
    EXPECT_EQ(NumberedName(u"C:\\d\\a"_s, 1), u"C:\\d\\a(1)"_s);
    EXPECT_EQ(NumberedName(u"C:\\d\\"_s, 1), u"C:\\d\\(1)"_s);
}

TEST(NumberedName, IsEmptyForABareOrBlankName)
{
    EXPECT_EQ(NumberedName(u"a.wfp"_s, 1), QString());
    EXPECT_EQ(NumberedName(u"   "_s, 1), QString());
    EXPECT_EQ(NumberedName(QString(), 1), QString());
}

TEST(NumberedName, TakesADotOfTheFolderForTheExtension)
{
    EXPECT_EQ(NumberedName(u"C:\\d.x\\a"_s, 1), u"C:\\d.x\\a(1).x\\a"_s);
}

TEST(ByteSizeText, HasThreeDigits)
{
    EXPECT_EQ(byteSizeText(0), u"0 bytes"_s);
    EXPECT_EQ(byteSizeText(532), u"532 bytes"_s);
    EXPECT_EQ(byteSizeText(1023), u"1023 bytes"_s);
    EXPECT_EQ(byteSizeText(1024), u"1.00 KB"_s);
    EXPECT_EQ(byteSizeText(1340), u"1.30 KB"_s);
    EXPECT_EQ(byteSizeText(1536), u"1.50 KB"_s);
    EXPECT_EQ(byteSizeText(23506), u"22.9 KB"_s);
    EXPECT_EQ(byteSizeText(999 * 1024), u"999 KB"_s);
    EXPECT_EQ(byteSizeText(1023 * 1024), u"0.99 MB"_s);
    EXPECT_EQ(byteSizeText(240.0 * 1024 * 1024), u"240 MB"_s);
    EXPECT_EQ(byteSizeText(2400000000.0), u"2.23 GB"_s);
    EXPECT_EQ(byteSizeText(1e15), u"909 TB"_s);
}
