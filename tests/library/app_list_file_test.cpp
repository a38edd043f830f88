#include "library/library_bench.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

class AppListFileTest : public testing::Test, protected recording::LibraryBench
{
protected:
    QStringList loaded(const QByteArray &content)
    {
        writeBytes(folder.configTxt(), content);
        return listFile.load();
    }
};

} // namespace

TEST_F(AppListFileTest, savesEachKeywordWithALineEnd)
{
    listFile.ConfigSave({u"a"_s, u"b"_s});
    EXPECT_EQ(bytesOf(folder.configTxt()), "a\r\nb\r\n");
}

TEST_F(AppListFileTest, savesAnEmptyListAsOneLineEnd)
{
    listFile.ConfigSave({});
    EXPECT_EQ(bytesOf(folder.configTxt()), "\r\n");
}

TEST_F(AppListFileTest, savingReplacesTheWholeFile)
{
    listFile.ConfigSave({u"a"_s, u"b"_s, u"c"_s});
    listFile.ConfigSave({u"c"_s});
    EXPECT_EQ(bytesOf(folder.configTxt()), "c\r\n");
    EXPECT_EQ(QDir(folder.path() + u"/config/load"_s).entryList(QDir::Files | QDir::Hidden),
        QStringList(u"config.txt"_s));
}

TEST_F(AppListFileTest, loadsInTheSavedOrder)
{
    EXPECT_EQ(loaded("z\r\na\r\nm\r\n"), QStringList({u"z"_s, u"a"_s, u"m"_s}));
}

TEST_F(AppListFileTest, anEmptyFileIsFilledFromTheFoldersAndNotRewritten)
{
    folder.addApp(u"b"_s);
    folder.addApp(u"a"_s);
    EXPECT_EQ(loaded(""), QStringList({u"a"_s, u"b"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "");
}

TEST_F(AppListFileTest, aMissingFileIsFilledFromTheFoldersAndNotMade)
{
    folder.addApp(u"a"_s);
    EXPECT_EQ(listFile.load(), QStringList(u"a"_s));
    EXPECT_FALSE(QFile::exists(folder.configTxt()));
}

TEST_F(AppListFileTest, aSavedEmptyListIsFilledFromTheFolders)
{
    folder.addApp(u"a"_s);
    EXPECT_EQ(loaded("\r\n"), QStringList(u"a"_s));
}

TEST_F(AppListFileTest, aBlankFirstLineAddsTheFoldersThatAreNotNamed)
{
    folder.addApp(u"a"_s);
    folder.addApp(u"b"_s);
    EXPECT_EQ(loaded("\r\nb\r\n\r\nx\r\n"), QStringList({u"b"_s, u"x"_s, u"a"_s}));
}

TEST_F(AppListFileTest, duplicatesAndMissingFoldersStayListed)
{
    EXPECT_EQ(loaded("a\r\na\r\ngone\r\n"), QStringList({u"a"_s, u"a"_s, u"gone"_s}));
}

TEST_F(AppListFileTest, lineFeedsAloneSeparateKeywordsToo)
{
    EXPECT_EQ(loaded("a\nb\n"), QStringList({u"a"_s, u"b"_s}));
}

TEST_F(AppListFileTest, aFileOfAnotherEncodingIsReadAsChinese)
{
    EXPECT_EQ(loaded("\xc4\xe3\xba\xc3\r\n"), QStringList(u"你好"_s));
}

TEST_F(AppListFileTest, bytesThatAreNoTextLoseNoOtherLine)
{
    const QStringList keywords = loaded("a\r\n\xff\xfe\x80\r\nb\r\n");
    EXPECT_EQ(keywords.size(), 3);
    EXPECT_EQ(keywords.front(), u"a"_s);
    EXPECT_EQ(keywords.back(), u"b"_s);
}

TEST_F(AppListFileTest, loadLinesIntoListAppendsAndIgnoresAMissingFile)
{
    QStringList lines{u"old"_s};
    LoadLinesIntoList(folder.path() + u"\\nowhere.txt"_s, lines, paths, codec);
    EXPECT_EQ(lines, QStringList(u"old"_s));
    writeBytes(folder.path() + u"/some.txt"_s, "one\r\n\r\ntwo");
    LoadLinesIntoList(folder.path() + u"\\some.txt"_s, lines, paths, codec);
    EXPECT_EQ(lines, QStringList({u"old"_s, u"one"_s, u""_s, u"two"_s}));
}

TEST_F(AppListFileTest, tenThousandAppsLoadFilterAndSave)
{
    QStringList keywords;
    for (int i = 0; i < 10000; ++i)
        keywords += u"app%1"_s.arg(i, 5, 10, QChar(u'0'));
    for (const QString &keyword : std::as_const(keywords))
        QDir().mkpath(folder.apps(keyword));
    load();
    EXPECT_EQ(lists.List.stringList(), keywords);
    lists.filter(u"0999"_s);
    EXPECT_EQ(lists.List2.rowCount(), 11);
    listFile.ConfigSave(lists.List.stringList());
    EXPECT_EQ(listFile.load(), keywords);
}

TEST_F(AppListFileTest, aKillDuringSavesLosesNoLine)
{
    QStringList even;
    QStringList odd;
    for (int i = 0; i < 2000; ++i) {
        even += u"even%1"_s.arg(i);
        odd += u"odd%1"_s.arg(i);
    }
    listFile.ConfigSave(even);

    int saves = 0;
    for (int kill = 0; kill < 20; ++kill) {
        int report[2];
        ASSERT_EQ(pipe(report), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i) {
                listFile.ConfigSave(i % 2 == 0 ? odd : even);
                if (write(report[1], "s", 1) != 1)
                    _exit(1);
            }
        }
        close(report[1]);
        for (int i = 0; i < 10 + kill; ++i) {
            char saved = 0;
            ASSERT_EQ(read(report[0], &saved, 1), 1);
            ++saves;
        }
        // The child is in the midst of its next save now.
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(report[0]);
        const QStringList found = listFile.load();
        ASSERT_TRUE(found == even || found == odd) << found.size();
    }
    EXPECT_GE(saves, 200);
}

} // namespace plum
