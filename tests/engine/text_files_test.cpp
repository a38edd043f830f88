#include "engine/text_files.h"
#include "platform/recording/recording_platform.h"
#include "support/printers.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class TextFilesTest : public testing::Test
{
protected:
    QString fileHolding(const QByteArray &bytes)
    {
        const QString path = m_folder.filePath(u"script.wf"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QStringList linesOf(const QByteArray &bytes)
    {
        QStringList lines;
        EXPECT_TRUE(files.appendLines(fileHolding(bytes), lines));
        return lines;
    }

    QTemporaryDir m_folder;
    recording::RecordingPaths m_paths;
    recording::RecordingTextCodec m_codec;
    TextFiles files{m_paths, m_codec};
};

} // namespace

TEST_F(TextFilesTest, CrLfEndsALine)
{
    EXPECT_EQ(linesOf("a\r\nb\r\n"), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(TextFilesTest, ALoneCrEndsALine)
{
    EXPECT_EQ(linesOf("a\rb\r\rc\r"), (QStringList{u"a"_s, u"b"_s, QString(), u"c"_s}));
}

TEST_F(TextFilesTest, AFileWithLfEndsOnlyIsOneLine)
{
    EXPECT_EQ(linesOf("a\nb\n"), QStringList{u"a\nb\n"_s});
}

TEST_F(TextFilesTest, ALastLineWithoutAnEndIsStillRead)
{
    EXPECT_EQ(linesOf("a\r\nb"), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(TextFilesTest, AnLfAfterACrLfBelongsToTheNextLine)
{
    EXPECT_EQ(linesOf("a\r\n\nb\r\n"), (QStringList{u"a"_s, u"\nb"_s}));
}

TEST_F(TextFilesTest, CommentsAndBlankLinesAreItems)
{
    EXPECT_EQ(
        linesOf("// x\r\n\r\n  \r\nset.a\r\n"), (QStringList{u"// x"_s, QString(), u"  "_s, u"set.a"_s}));
}

TEST_F(TextFilesTest, AnEmptyFileHasNoLines)
{
    EXPECT_EQ(linesOf(""), QStringList());
    EXPECT_EQ(linesOf("\r\n"), QStringList{QString()});
}

TEST_F(TextFilesTest, NulBytesAreCharacters)
{
    const QStringList lines = linesOf(QByteArray("a\0b\r\n\0\r\n", 8));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], QString::fromLatin1("a\0b", 3));
    EXPECT_EQ(lines[1], QString(1, QChar(0)));
}

TEST_F(TextFilesTest, BytesThatAreNoTextKeepTheLinesApart)
{
    const QStringList lines = linesOf("set.a \"\xff\xfe\x80\"\r\n\xc3\r\nset.b\r\n");
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith(u"set.a \""_s));
    EXPECT_EQ(lines[2], u"set.b"_s);
}

TEST_F(TextFilesTest, AppendsToWhatTheListHolds)
{
    QStringList lines{u"before"_s};
    EXPECT_TRUE(files.appendLines(fileHolding("a\r\n"), lines));
    EXPECT_EQ(lines, (QStringList{u"before"_s, u"a"_s}));
}

TEST_F(TextFilesTest, WhatCannotBeReadLeavesTheList)
{
    QStringList lines{u"before"_s};
    EXPECT_FALSE(files.appendLines(m_folder.filePath(u"missing.wf"_s), lines));
    EXPECT_FALSE(files.appendLines(m_folder.path(), lines));
    EXPECT_FALSE(files.appendLines(QString(), lines));
    EXPECT_EQ(lines, QStringList{u"before"_s});
}

TEST_F(TextFilesTest, OpensAPathWithBackslashes)
{
    fileHolding("a\r\n");
    QStringList lines;
    EXPECT_TRUE(files.appendLines(m_folder.path() + u"\\script.wf"_s, lines));
    EXPECT_EQ(lines, QStringList{u"a"_s});
}

TEST_F(TextFilesTest, ALineOfTwentyMegabytesIsOneLine)
{
    const QStringList lines = linesOf(QByteArray(20'000'000, 'x') + "\r\ny");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].size(), 20'000'000);
    EXPECT_EQ(lines[1], u"y"_s);
}

TEST_F(TextFilesTest, ReadAllTextJoinsTheLinesWithNothingBetween)
{
    EXPECT_EQ(files.ReadAllText(fileHolding("a\r\n\r\nb\rc"), ReadAllMode::Joined), u"abc"_s);
}

TEST_F(TextFilesTest, ReadAllTextGivesTheLinesBackInReverse)
{
    EXPECT_EQ(
        files.ReadAllText(fileHolding("a\r\nb\r\nc"), ReadAllMode::ReversedLines), u"c\r\nb\r\na\r\n"_s);
}

TEST_F(TextFilesTest, ReadAllTextOfAMissingFileIsEmpty)
{
    const QString missing = m_folder.filePath(u"missing"_s);
    EXPECT_EQ(files.ReadAllText(missing, ReadAllMode::Joined), QString());
    EXPECT_EQ(files.ReadAllText(missing, ReadAllMode::ReversedLines), QString());
    EXPECT_EQ(files.ReadAllText(QString(), ReadAllMode::Joined), QString());
}
