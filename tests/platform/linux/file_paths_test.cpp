#include "platform/linux/file_paths.h"
#include "support/printers.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::FilePaths;
using plum::test::TemporaryFiles;

namespace {

class FilePathsTest : public testing::Test
{
protected:
    // `path` below the test's folder, as the system opens it.
    QString opened(const QString &path) const { return paths.toSystem(files.folder() + u'\\' + path); }
    QString below(const QString &path) const { return files.folder() + u'/' + path; }

    TemporaryFiles files;
    FilePaths paths{u"/opt/plum/plum"_s};
};

} // namespace

TEST_F(FilePathsTest, BackslashesBecomeSlashes)
{
    files.write(u"a/b.txt"_s, "x");
    EXPECT_EQ(opened(u"a\\b.txt"_s), below(u"a/b.txt"_s));
    EXPECT_EQ(opened(u"a/b.txt"_s), below(u"a/b.txt"_s));
    EXPECT_EQ(paths.toSystem(QString()), QString());
}

TEST_F(FilePathsTest, EachPartIsFoundInOtherLetterCase)
{
    files.write(u"Data/Übung/In.TXT"_s, "x");
    EXPECT_EQ(opened(u"data\\ÜBUNG\\in.txt"_s), below(u"Data/Übung/In.TXT"_s));
    EXPECT_EQ(opened(u"DATA\\"_s), below(u"Data/"_s));
    EXPECT_EQ(opened(u"data\\\\.\\übung\\..\\übung"_s), below(u"Data/./Übung/../Übung"_s));
}

TEST_F(FilePathsTest, TheExactNameComesFirst)
{
    files.write(u"A.txt"_s, "x");
    files.write(u"a.txt"_s, "x");
    EXPECT_EQ(opened(u"a.txt"_s), below(u"a.txt"_s));
    EXPECT_EQ(opened(u"A.txt"_s), below(u"A.txt"_s));
}

TEST_F(FilePathsTest, PartsThatAreMissingStayAsWritten)
{
    files.write(u"Data/in.txt"_s, "x");
    EXPECT_EQ(opened(u"data\\New\\Out.txt"_s), below(u"Data/New/Out.txt"_s));
    EXPECT_EQ(opened(u"Nothing\\In.txt"_s), below(u"Nothing/In.txt"_s));
    EXPECT_EQ(paths.toSystem(u"C:\\none\\t.txt"_s), u"C:/none/t.txt"_s);
}

TEST_F(FilePathsTest, RelativePathsAreLookedUpInTheWorkingFolder)
{
    files.write(u"Data/in.txt"_s, "x");
    const QString before = QDir::currentPath();
    QDir::setCurrent(files.folder());
    EXPECT_EQ(paths.toSystem(u"DATA\\IN.txt"_s), u"Data/in.txt"_s);
    QDir::setCurrent(before);
}

TEST_F(FilePathsTest, AFolderThatCannotBeSearchedStaysAsWritten)
{
    files.write(u"file"_s, "x");
    EXPECT_EQ(opened(u"FILE\\below"_s), below(u"file/below"_s));
}

TEST(ProgramFolder, IsTheFolderOfThePathThatStartedTheProgram)
{
    EXPECT_EQ(FilePaths(u"/opt/plum/plum"_s).programFolder(), u"/opt/plum"_s);
    EXPECT_EQ(FilePaths(u"/opt/./x/../plum/plum"_s).programFolder(), u"/opt/plum"_s);
    EXPECT_EQ(FilePaths(u"./plum"_s).programFolder(), QDir::currentPath());
    EXPECT_EQ(FilePaths(u"sub/plum"_s).programFolder(), QDir::currentPath() + u"/sub"_s);
}

TEST(ProgramFolder, ALinkIsNotFollowed)
{
    TemporaryFiles files;
    files.write(u"real/plum"_s, "x");
    QDir(files.folder()).mkdir(u"mine"_s);
    ASSERT_TRUE(QFile::link(files.folder() + u"/real/plum"_s, files.folder() + u"/mine/plum"_s));
    EXPECT_EQ(FilePaths(files.folder() + u"/mine/plum"_s).programFolder(), files.folder() + u"/mine"_s);
}

TEST(ProgramFolder, OfABareNameIsFoundInThePath)
{
    TemporaryFiles files;
    const QString program = files.write(u"plum-of-this-test"_s, "#!/bin/sh\n");
    ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(files.folder()) + ':' + before);
    EXPECT_EQ(FilePaths(u"plum-of-this-test"_s).programFolder(), files.folder());
    qputenv("PATH", before);
}

TEST(ProgramFolder, OfANameThatLeadsNowhereIsThatOfTheRunningFile)
{
    const QString running = QFileInfo(QFile::symLinkTarget(u"/proc/self/exe"_s)).path();
    EXPECT_EQ(FilePaths(u"no-such-program-anywhere"_s).programFolder(), running);
    EXPECT_EQ(FilePaths(QString()).programFolder(), running);
}
