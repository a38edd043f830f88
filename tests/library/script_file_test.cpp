#include "library/script_file.h"

#include "platform/recording/recording_platform.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class ScriptFileTest : public testing::Test
{
protected:
    QByteArray saved(const QByteArray &before, const QString &text,
        ScriptFile::LineEnds lineEnds = ScriptFile::LineEnds::Kept)
    {
        return ScriptFile(before, platform.textCodec()).withText(text, lineEnds, platform.textCodec());
    }

    recording::RecordingPlatform platform;
};

} // namespace

TEST_F(ScriptFileTest, showsLinesWithoutTheLastLineEnd)
{
    EXPECT_EQ(ScriptFile("a\r\nb\r\n", platform.textCodec()).shown(), u"a\r\nb"_s);
    EXPECT_EQ(ScriptFile("a\r\nb", platform.textCodec()).shown(), u"a\r\nb"_s);
    EXPECT_EQ(ScriptFile("a\r\n\r\n", platform.textCodec()).shown(), u"a\r\n"_s);
    EXPECT_EQ(ScriptFile("", platform.textCodec()).shown(), QString());
}

TEST_F(ScriptFileTest, aFileThatIsSavedUnchangedKeepsEveryByte)
{
    for (const QByteArray bytes : {"", "a", "a\r\n", "a\nb\rc\r\n\r\n", "\n", "a\xE2\x80\xA9z\n",
             "\xEF\xBB\xBF\xE4\xBD\xA0\r\nb\r\n", "\r\n\r\n"}) {
        const ScriptFile file(bytes, platform.textCodec());
        EXPECT_EQ(file.withText(file.shown(), ScriptFile::LineEnds::Kept, platform.textCodec()), bytes);
    }
}

TEST_F(ScriptFileTest, aLineOfARunIsOneOrMoreOfTheEditor)
{
    const auto linesOf = [this](const QByteArray &bytes) {
        const ScriptFile file(bytes, platform.textCodec());
        QStringList lines;
        for (int shown = 0; shown < 4; ++shown)
            lines += QString::number(file.runLineOf(shown));
        for (int line = 1; line < 4; ++line)
            lines += QString::number(file.shownLineOf(line));
        return lines.join(u' ');
    };
    EXPECT_EQ(linesOf("a\r\nb\r\nc\r\nd"), u"1 2 3 4 0 1 2"_s);
    EXPECT_EQ(linesOf("a\nb\r\nc\r\nd\r\n"), u"1 1 2 3 0 2 3"_s);
    EXPECT_EQ(linesOf("//edition:2\nb\nc\nd\n"), u"1 2 3 4 0 1 2"_s);
    EXPECT_EQ(linesOf("//edition:2\nb\xE2\x80\xA9"
                      "c\nd\n"),
        u"1 2 2 3 0 1 3"_s);
}

TEST_F(ScriptFileTest, theLastLineEndIsKept)
{
    EXPECT_EQ(saved("a\r\nb\r\n", u"a\r\nc"_s), "a\r\nc\r\n");
    EXPECT_EQ(saved("a\r\nb", u"a\r\nc"_s), "a\r\nc");
    EXPECT_EQ(saved("", u"a\r\nc"_s), "a\r\nc");
    EXPECT_EQ(saved("a\r\n", u"a\r\nb\r\n"_s), "a\r\nb\r\n");
}

TEST_F(ScriptFileTest, aChangeLeavesTheOtherLinesAlone)
{
    EXPECT_EQ(saved("a\nb\nc\n", u"a\r\nB\r\nc"_s), "a\nB\nc\n");
    EXPECT_EQ(saved("a\nb\nc\n", u"a\r\nnew\r\nb\r\nc"_s), "a\nnew\r\nb\nc\n");
    EXPECT_EQ(saved("a\nb\rc\r\nd", u"b\r\nd"_s), "b\rd");
    EXPECT_EQ(saved("x\ny\nz\n", u"z\r\nx\r\ny"_s), "z\nx\ny\n");
}

TEST_F(ScriptFileTest, mendedLineEndsAreAllTheSame)
{
    const ScriptFile file("a\nb\rc\xE2\x80\xA9"
                          "d\r\n",
        platform.textCodec());
    EXPECT_EQ(file.oddLineEnds(), 2);
    EXPECT_EQ(file.withText(file.shown(), ScriptFile::LineEnds::Mended, platform.textCodec()),
        "a\r\nb\r\nc\r\nd\r\n");
}

TEST_F(ScriptFileTest, lineFeedsAreNothingOddWhereAScriptAsksForEdition2)
{
    EXPECT_EQ(ScriptFile("//edition:2\nset.a 1\n", platform.textCodec()).oddLineEnds(), 0);
    EXPECT_EQ(ScriptFile("//edition 2\nset.a 1\n", platform.textCodec()).oddLineEnds(), 2);
}

} // namespace plum
