#include "archive/zip_builder.h"
#include "library/library_bench.h"
#include "library/zip_unpacker.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;
using testing::buildArchive;
using testing::deflatedEntry;
using testing::storedEntry;

namespace {

// Packages that are dropped onto a list, unpacked by the real archive reader.
class DroppedPackageTest : public ::testing::Test, protected recording::LibraryBench
{
protected:
    QString put(const QByteArray &package)
    {
        const QString path = folder.path() + u"/downloads/calc.wfp"_s;
        writeBytes(path, package);
        return path;
    }

    ZipUnpacker zip{paths, codec};
    AppLibrary apps{{paths, codec, shell, dialogs, zip, lists, listFile}};
};

} // namespace

TEST_F(DroppedPackageTest, becomesAnApp)
{
    const QString package = put(
        buildArchive({storedEntry("main.wf", "os.tips \"1\"\r\n"), deflatedEntry("pictures/a", "aaaa")}));
    EXPECT_EQ(apps.DropPackage(package), AppLibrary::Dropped::Done);
    EXPECT_EQ(log.lines(), QStringList(u"message! Successfully"_s));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "os.tips \"1\"\r\n");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/pictures/a"_s)), "aaaa");
    EXPECT_EQ(bytesOf(folder.configTxt()), "calc\r\n");
    EXPECT_TRUE(QFile::exists(package));
}

TEST_F(DroppedPackageTest, replacesTheFilesOfAnAppAndKeepsTheOthers)
{
    folder.addApp(u"calc"_s, "old");
    writeBytes(folder.apps(u"calc/mine"_s), "kept");
    const QString package = put(buildArchive({storedEntry("main.wf", "new")}));
    EXPECT_EQ(apps.DropPackage(package), AppLibrary::Dropped::NeedsName);
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "old");
    EXPECT_TRUE(apps.InstallPackage(apps.pendingInstall()));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "new");
    EXPECT_EQ(bytesOf(folder.apps(u"calc/mine"_s)), "kept");
}

TEST_F(DroppedPackageTest, withAnEntryThatCannotBeReadGivesTheOthers)
{
    auto secret = storedEntry("secret", "x");
    secret.flags = 1;
    EXPECT_EQ(apps.DropPackage(put(buildArchive({secret, storedEntry("main.wf", "x")}))),
        AppLibrary::Dropped::Done);
    EXPECT_EQ(log.lines(), QStringList(u"message! Successfully"_s));
    EXPECT_EQ(bytesOf(folder.script(u"calc"_s)), "x");
    EXPECT_FALSE(QFile::exists(folder.apps(u"calc/secret"_s)));
}

TEST_F(DroppedPackageTest, thatIsNoArchiveSaysErrorAndLeavesNothing)
{
    apps.DropPackage(put("no archive"));
    EXPECT_EQ(log.lines(), QStringList(u"message! Error"_s));
    EXPECT_TRUE(lists.List.stringList().isEmpty());
    EXPECT_FALSE(QFile::exists(folder.apps(u"calc"_s)));
}

} // namespace plum
