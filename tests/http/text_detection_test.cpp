#include "http/http_client.h"
#include "http/http_text.h"
#include "http/text_detection.h"
#include "platform/linux/linux_text_codec.h"
#include "support/iconv.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::BytesToText;
using plum::IsUtf8;

TEST(IsUtf8, FewerThanThreeBytesAreNot)
{
    EXPECT_FALSE(IsUtf8(QByteArray()));
    EXPECT_FALSE(IsUtf8("a"));
    EXPECT_FALSE(IsUtf8("\xC3\xA9"));
}

TEST(IsUtf8, PureAsciiIsNot)
{
    EXPECT_FALSE(IsUtf8("plain text"));
    EXPECT_FALSE(IsUtf8(QByteArray(1000, 'x')));
}

TEST(IsUtf8, AMarkIsEnough)
{
    EXPECT_TRUE(IsUtf8("\xEF\xBB\xBF"));
    EXPECT_TRUE(IsUtf8("\xEF\xBB\xBF\xFF\xFF"));
}

TEST(IsUtf8, TwoAndThreeByteSequences)
{
    EXPECT_TRUE(IsUtf8("a\xC3\xA9"));
    EXPECT_TRUE(IsUtf8("\xE4\xBD\xA0"));
    EXPECT_TRUE(IsUtf8("0123456789\xE4\xBD\xA0 0123456789"));
    EXPECT_TRUE(IsUtf8("\xE4\xBD\xA0\xC3\xA9"));
}

TEST(IsUtf8, FourByteSequencesAreNot)
{
    EXPECT_FALSE(IsUtf8("\xE4\xBD\xA0\xF0\x9F\x98\x80"));
}

TEST(IsUtf8, ASequenceCutOffAtTheEndIsNot)
{
    EXPECT_FALSE(IsUtf8("ab\xC3"));
    EXPECT_FALSE(IsUtf8("ab\xE4\xBD"));
    EXPECT_FALSE(IsUtf8("abc\xE4"));
}

TEST(IsUtf8, OverlongAndSurrogateSequencesCount)
{
    EXPECT_TRUE(IsUtf8("a\xC0\x80"));
    EXPECT_TRUE(IsUtf8("\xED\xA0\x80"));
}

TEST(BytesToText, AsciiReadsTheSameEitherWay)
{
    plum::LinuxTextCodec codec;
    QByteArray ascii;
    for (char c = 1; c < 127; ++c)
        ascii += c;
    EXPECT_EQ(BytesToText(ascii, codec), QString::fromLatin1(ascii));
}

TEST(BytesToText, GbkThatLooksLikeUtf8IsReadAsUtf8)
{
    plum::LinuxTextCodec codec;
    const QByteArray bytes("\xC2\xB7\xC2\xB7"); // two characters in GBK
    EXPECT_EQ(BytesToText(bytes, codec), u"··"_s);
}

TEST(BytesToText, OneOrTwoBytesAreGb2312)
{
    plum::LinuxTextCodec codec;
    EXPECT_EQ(BytesToText("\xC3\xA9", codec), u"茅"_s);
    EXPECT_EQ(BytesToText("a", codec), u"a"_s);
}

TEST(BytesToText, AnEmojiMakesThePageGb2312)
{
    plum::LinuxTextCodec codec;
    const QByteArray page = u"你好😀"_s.toUtf8();
    EXPECT_EQ(BytesToText(page, codec), codec.fromGb2312(page));
    EXPECT_NE(BytesToText(page, codec), QString::fromUtf8(page));
}

TEST(BytesToText, TheMarkIsNotPartOfTheText)
{
    plum::LinuxTextCodec codec;
    EXPECT_EQ(BytesToText("\xEF\xBB\xBF"
                          "abc",
                  codec),
        u"abc"_s);
}

// Every byte and byte pair that iconv reads as GBK, but for those that only private-use characters stand for.
TEST(TextCodecs, Gb2312IsReadAsIconvReadsGbk)
{
    plum::LinuxTextCodec codec;
    int compared = 0;
    for (int lead = 0x01; lead <= 0xFE; ++lead) {
        for (int trail = 0x40; trail <= 0xFE; ++trail) {
            const QByteArray bytes = lead < 0x80
                ? QByteArray(1, static_cast<char>(lead))
                : QByteArray{}.append(static_cast<char>(lead)).append(static_cast<char>(trail));
            const auto expected = plum::test::decodedByIconv("GBK", bytes);
            if (!expected)
                continue;
            ++compared;
            EXPECT_EQ(codec.fromGb2312(bytes), *expected) << bytes.toHex().toStdString();
            if (lead < 0x80)
                break;
        }
    }
    EXPECT_GT(compared, 20'000);
}

// Pages of characters that the encoding has, in each encoding of the field, through the same detection.
TEST(TextCodecs, PagesComeBackWhole)
{
    plum::LinuxTextCodec codec;
    QString hanzi;
    for (char16_t c = u'一'; c < u'龥'; c = static_cast<char16_t>(c + 7)) {
        hanzi += QChar(c);
        if (c % 5 == 0)
            hanzi += u" <b>ascii</b>\r\n"_s;
    }
    const auto gbk = plum::test::encodedByIconv("GBK", hanzi);
    const auto gb18030 = plum::test::encodedByIconv("GB18030", hanzi);
    ASSERT_TRUE(gbk && gb18030);
    EXPECT_EQ(BytesToText(hanzi.toUtf8(), codec), hanzi);
    EXPECT_EQ(BytesToText("\xEF\xBB\xBF" + hanzi.toUtf8(), codec), hanzi);
    EXPECT_EQ(BytesToText(*gbk, codec), hanzi);
    EXPECT_EQ(codec.fromSystem(*gb18030), hanzi);
    EXPECT_EQ(codec.fromSystem(hanzi.toUtf8()), hanzi);

    QString level1;
    for (int row = 0xB0; row <= 0xF7; ++row) {
        for (int cell = 0xA1; cell <= 0xFE; ++cell) {
            const QByteArray pair
                = QByteArray{}.append(static_cast<char>(row)).append(static_cast<char>(cell));
            level1 += plum::test::decodedByIconv("GB2312", pair).value_or(QString());
        }
    }
    EXPECT_GT(level1.size(), 6000);
    const auto gb2312 = plum::test::encodedByIconv("GB2312", level1);
    ASSERT_TRUE(gb2312);
    EXPECT_EQ(BytesToText(*gb2312, codec), level1);
}

TEST(TextCodecs, AMarkIsNotPartOfASystemText)
{
    plum::LinuxTextCodec codec;
    EXPECT_EQ(codec.fromSystem("\xEF\xBB\xBF"
                               "set.a"),
        u"set.a"_s);
    EXPECT_EQ(codec.fromSystem("\xEF\xBB\xBF"), QString());
    EXPECT_EQ(codec.toSystem(u"é"), "\xC3\xA9");
}

TEST(TextCodecs, BytesThatAreNoTextDoNotHideTheRest)
{
    plum::LinuxTextCodec codec;
    EXPECT_EQ(codec.fromUtf8("a\xFF"
                             "b"),
        u"a\uFFFDb"_s);
    const QString text = codec.fromGb2312("a\xFF"
                                          "b");
    EXPECT_TRUE(text.startsWith(u'a') && text.endsWith(u'b'));
    EXPECT_TRUE(codec.fromGb2312("ab\xC4").startsWith(u"ab"_s));
}

TEST(ResponseText, FollowsTheContentType)
{
    plum::LinuxTextCodec codec;
    EXPECT_EQ(plum::responseText({200, "text/plain; charset=\"GBK\"", "\xC4\xE3"}, codec), u"你"_s);
    EXPECT_EQ(plum::responseText({200, "text/plain;Charset=ISO-8859-1", "\xE9"}, codec), u"é"_s);
    EXPECT_EQ(plum::responseText({200, "text/plain; charset=no-such", "\xC3\xA9"}, codec), u"é"_s);
    EXPECT_EQ(plum::responseText({200, "text/plain", "\xC3\xA9"}, codec), u"é"_s);
    EXPECT_EQ(plum::responseText({200, "text/plain; charset=GBK", "\xEF\xBB\xBF\xC3\xA9"}, codec), u"é"_s);
    // Servers say GB2312 for pages with characters that only GBK has.
    EXPECT_EQ(plum::responseText({200, "text/plain; charset=gb2312", "\xE9\x46"}, codec), u"镕"_s);
    EXPECT_EQ(plum::responseText({200, "text/plain", QByteArray("\xFF\xFE\xE9\x00", 4)}, codec), u"é"_s);
}
