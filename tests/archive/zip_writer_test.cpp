#include "archive/zip_writer.h"

#include "archive/unzip.h"
#include "platform/recording/recording_platform.h"
#include "support/temporary_files.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::ZipWriter;
using plum::test::TemporaryFiles;

namespace {

const QDateTime someTime(QDate(2024, 2, 29), QTime(13, 45, 58));

class WrittenArchive : public testing::Test
{
protected:
    WrittenArchive()
    {
        ZipWriter writer;
        for (const auto &[name, content] : entries)
            writer.add(name, content, someTime);
        path = files.write(u"a.wfp"_s, writer.finish());
    }

    // True when a tool extracted everything.
    bool extracts(const QString &program, const QStringList &arguments)
    {
        QProcess tool;
        tool.setWorkingDirectory(files.folder());
        tool.start(program, arguments);
        return tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0;
    }

    void expectEntriesIn(const QString &folder)
    {
        for (const auto &[name, content] : entries) {
            EXPECT_EQ(files.read(folder + u'/' + name), content) << qPrintable(name);
            EXPECT_EQ(QFileInfo(files.folder() + u'/' + folder + u'/' + name).lastModified(), someTime);
        }
    }

    TemporaryFiles files;
    QString path;
    const std::vector<std::pair<QString, QByteArray>> entries{{u"main.wf"_s, "os.tips \"a\"\r\n"},
        {u"empty"_s, {}}, {u"deep/er/你好.txt"_s, QByteArray(100000, 'x')}};
};

} // namespace

TEST_F(WrittenArchive, UnzipOpensIt)
{
    ASSERT_TRUE(extracts(u"unzip"_s, {u"-q"_s, path, u"-d"_s, u"out"_s}));
    expectEntriesIn(u"out"_s);
}

TEST_F(WrittenArchive, SevenZipOpensIt)
{
    ASSERT_TRUE(extracts(u"7z"_s, {u"x"_s, u"-oout"_s, path}));
    expectEntriesIn(u"out"_s);
}

TEST_F(WrittenArchive, PythonOpensItAndFindsTheChecksumsRight)
{
    EXPECT_TRUE(extracts(u"python3"_s,
        {u"-c"_s,
            u"import sys,zipfile; z=zipfile.ZipFile(sys.argv[1]); sys.exit(z.testzip() is not None or "
            u"z.namelist()!=['main.wf','empty','deep/er/\u4f60\u597d.txt'])"_s,
            path}));
}

TEST_F(WrittenArchive, OurOwnReaderOpensIt)
{
    plum::recording::RecordingPlatform platform;
    plum::Unzip reader(platform.paths(), platform.textCodec());
    ASSERT_TRUE(reader.Init(path));
    EXPECT_EQ(reader.Count(), static_cast<int>(entries.size()));
    ASSERT_TRUE(reader.unzip(files.folder() + u"/out"_s));
    EXPECT_EQ(reader.LastError(), QString());
    expectEntriesIn(u"out"_s);
}

TEST(ZipWriter, AnArchiveWithoutEntriesIsOneToo)
{
    const QByteArray archive = ZipWriter().finish();
    EXPECT_EQ(archive.size(), 22);
    EXPECT_TRUE(archive.startsWith("PK\5\6"));
}

TEST(ZipWriter, ATimeOutsideTheFormatIsMovedIntoIt)
{
    ZipWriter writer;
    writer.add(u"a"_s, "x", QDateTime(QDate(1970, 5, 6), QTime(1, 2, 4)));
    constexpr qsizetype dateOffset = 12;
    const QByteArray archive = writer.finish();
    const auto date
        = static_cast<quint8>(archive[dateOffset]) | static_cast<quint8>(archive[dateOffset + 1]) << 8;
    EXPECT_EQ(date >> 9, 0);
    EXPECT_EQ(date >> 5 & 15, 5);
    EXPECT_EQ(date & 31, 6);
}

TEST(ZipWriter, TooManyEntriesGiveNoArchive)
{
    ZipWriter writer;
    for (int i = 0; i < 65535; ++i)
        writer.add(QString::number(i), {}, someTime);
    EXPECT_TRUE(writer.finish().isEmpty());
}

TEST(Crc32, HasTheKnownCheckValue)
{
    EXPECT_EQ(plum::crc32("123456789"), 0xCBF43926U);
    EXPECT_EQ(plum::crc32(""), 0U);
}
