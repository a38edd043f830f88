#include "archive/unzip.h"
#include "archive/unzip_bench.h"
#include "archive/zip_builder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::Unzip;

TEST(UnzipInit, ReadsTheDirectory)
{
    UnzipBench bench;
    BuiltEntry first = deflatedEntry("sub/main.wf", "mouse.click \"1:2\"");
    first.crc = 0xCAFEBABE;
    first.extra = "extra!";
    first.comment = "\xE6\xB3\xA8";
    first.externalAttributes = 0x81A40000;
    BuiltEntry folder = storedEntry("empty/", {});
    ASSERT_TRUE(bench.init(buildArchive({first, folder})));
    EXPECT_EQ(bench.reader.ZipName(), bench.archivePath());
    EXPECT_EQ(bench.reader.Comments(), QString());
    EXPECT_EQ(bench.reader.Count(), 2);

    const plum::ZipEntry entry = bench.reader.EntryInfo(0);
    EXPECT_EQ(entry.madeBySystem, u"3"_s);
    EXPECT_EQ(entry.madeByVersion, u"3.8"_s); // not 3.0: the minor digit comes from the whole value
    EXPECT_EQ(entry.neededSystem, u"0"_s);
    EXPECT_EQ(entry.neededVersion, u"2.0"_s);
    EXPECT_EQ(entry.flags, 0);
    EXPECT_EQ(entry.method, 8);
    EXPECT_EQ(entry.modified, QDateTime(QDate(2021, 3, 14), QTime(12, 34, 56)));
    EXPECT_EQ(entry.crc, 0xCAFEBABE);
    EXPECT_EQ(entry.compressedSize, first.data.size());
    EXPECT_EQ(entry.uncompressedSize, 17);
    EXPECT_EQ(entry.diskNumberStart, 0);
    EXPECT_EQ(entry.internalAttributes, 1);
    EXPECT_EQ(entry.externalAttributes, 0x81A40000);
    EXPECT_EQ(entry.localHeaderOffset, 0);
    EXPECT_EQ(entry.fileName, u"sub\\main.wf"_s);
    EXPECT_FALSE(entry.isFolder);
    EXPECT_EQ(entry.extra, "extra!");
    EXPECT_EQ(entry.comment, u"注"_s);

    EXPECT_EQ(bench.reader.EntryInfo(1).fileName, u"empty\\"_s);
    EXPECT_TRUE(bench.reader.EntryInfo(1).isFolder);
    EXPECT_EQ(bench.reader.EntryInfo(1).localHeaderOffset, 30 + 11 + first.data.size());
}

TEST(UnzipInit, GivesAnEmptyRecordForAnIndexWithoutEntry)
{
    UnzipBench bench;
    EXPECT_EQ(bench.reader.Count(), 0);
    ASSERT_TRUE(bench.init(buildArchive({storedEntry("a", "x")})));
    for (const int index : {-1, 1}) {
        EXPECT_EQ(bench.reader.EntryInfo(index).fileName, QString());
        EXPECT_EQ(bench.reader.EntryInfo(index).madeBySystem, QString());
    }
}

TEST(UnzipInit, HasNoDateForAnEmptyOrImpossibleOne)
{
    UnzipBench bench;
    BuiltEntry none = storedEntry("none", "x");
    none.date = none.time = 0;
    BuiltEntry impossible = storedEntry("impossible", "x");
    impossible.date = 41 << 9 | 13 << 5 | 1;
    ASSERT_TRUE(bench.init(buildArchive({none, impossible})));
    EXPECT_FALSE(bench.reader.EntryInfo(0).modified.isValid());
    EXPECT_FALSE(bench.reader.EntryInfo(1).modified.isValid());
}

TEST(UnzipInit, ReadsAnArchiveWithAComment)
{
    UnzipBench bench;
    BuiltEntry second = deflatedEntry("b", "bbbbbbbbbbbbbb");
    second.hasDescriptor = true;
    ASSERT_TRUE(bench.run(
        buildArchive({storedEntry("a", "x"), second, storedEntry("c", "y")}, {.comment = "what it is"})));
    EXPECT_EQ(bench.reader.Comments(), u"what it is"_s);
    EXPECT_EQ(bench.reader.Count(), 3);
    EXPECT_EQ(bench.content(u"b"_s), "bbbbbbbbbbbbbb");
    EXPECT_EQ(bench.content(u"c"_s), "y");
}

TEST(UnzipInit, ForgetsTheLastArchive)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.init(buildArchive({storedEntry("a", "x")}, {.comment = "first"})));
    ASSERT_TRUE(bench.init(buildArchive({})));
    EXPECT_EQ(bench.reader.Count(), 0);
    EXPECT_EQ(bench.reader.Comments(), QString());
    ASSERT_TRUE(bench.init(buildArchive({storedEntry("a", "x")})));
    EXPECT_FALSE(bench.init("no archive"));
    EXPECT_EQ(bench.reader.Count(), 0);
}

TEST(UnzipInit, FailsOnAMissingArchive)
{
    UnzipBench bench;
    EXPECT_FALSE(bench.reader.Init(bench.archivePath()));
    EXPECT_EQ(bench.errors, QStringList{u"Error mapping file "_s + bench.archivePath() + u"@-1"_s});
    EXPECT_FALSE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors.size(), 2);
    EXPECT_FALSE(bench.has(u""_s));
}

TEST(UnzipInit, FailsOnAFolderAndOnAnEmptyFile)
{
    UnzipBench bench;
    EXPECT_FALSE(bench.reader.Init(UnzipBench::backslashed(bench.folder.path())));
    EXPECT_FALSE(bench.init({}));
    EXPECT_EQ(bench.errors.back(), u"Error mapping file "_s + bench.archivePath() + u"@-1"_s);
}

TEST(UnzipInit, FailsOnAReadOnlyArchive)
{
    UnzipBench bench;
    const QByteArray archive = buildArchive({storedEntry("a", "x")});
    ASSERT_TRUE(bench.init(archive));
    QFile file(bench.folder.filePath(u"a.wfp"_s));
    file.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    EXPECT_FALSE(bench.reader.unzip(bench.targetPath()));
    EXPECT_FALSE(bench.reader.Init(bench.archivePath()));
    const QString message = u"Error mapping file "_s + bench.archivePath() + u"@-1"_s;
    EXPECT_EQ(bench.errors, (QStringList{message, message}));
    EXPECT_FALSE(bench.has(u"a"_s));
}

TEST(UnzipInit, FailsOnAnUnknownHeader)
{
    UnzipBench bench;
    EXPECT_FALSE(bench.init(QByteArray(100, 'x')));
    EXPECT_EQ(bench.errors, QStringList{u"Unknown header@-1"_s});
}

TEST(UnzipInit, ASizeThatLeadsTheScanBackEndsIt)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("a", "x");
    entry.compressedSize = 0xFFFFFFE0;
    const QByteArray archive = buildArchive({entry}, {.comment = "c"});
    EXPECT_TRUE(bench.init(archive)); // by the record at the end
    EXPECT_FALSE(bench.init(archive.chopped(2)));
    EXPECT_EQ(bench.errors, QStringList{u"Unknown header@-1"_s});
}

TEST(UnzipInit, FailsOnAnInvalidCenterHeader)
{
    UnzipBench bench;
    BuiltEntry second = storedEntry("b", "x");
    second.centralSignature = 0x12345678;
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x"), second})));
    EXPECT_EQ(bench.errors, QStringList{u"Invalid center header@1"_s});
    EXPECT_EQ(bench.reader.Count(), 0);
}

TEST(UnzipInit, FailsWhenTheDirectoryRunsPastTheEnd)
{
    UnzipBench bench;
    const QByteArray one = buildArchive({storedEntry("a", "x")}, {.entries = 65535});
    EXPECT_FALSE(bench.init(one));
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x")}, {.directoryOffset = 0x7FFFFFFF})));
    EXPECT_EQ(bench.reader.Count(), 0);
}

TEST(UnzipInit, FailsWhenTheCommentIsCutOff)
{
    UnzipBench bench;
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x")}, {.comment = "comment"}).chopped(1)));
    EXPECT_EQ(bench.errors, QStringList{u"Error mapping file "_s + bench.archivePath() + u"@0"_s});
}

namespace {

const QByteArray zip64Record = littleEndian32(0x06064B50) + littleEndian32(44) + QByteArray(48, '\0');
const QByteArray zip64Locator = littleEndian32(0x07064B50) + QByteArray(16, '\0');

} // namespace

TEST(UnzipInit, ReadsWhatThePlainFieldsSayBesideZip64)
{
    for (const QByteArray comment : {"", "c"}) {
        UnzipBench bench;
        ASSERT_TRUE(bench.run(buildArchive(
            {storedEntry("a", "x")}, {.comment = comment, .beforeEnd = zip64Record + zip64Locator})));
        EXPECT_EQ(bench.errors, QStringList());
        EXPECT_EQ(bench.content(u"a"_s), "x");
        EXPECT_EQ(bench.reader.Comments(), QString::fromLatin1(comment));
    }
}

TEST(UnzipInit, RefusesWhatOnlyZip64Knows)
{
    UnzipBench bench;
    BuiltEntry large = storedEntry("a", "x");
    large.compressedSize = 0xFFFFFFFF;
    EXPECT_FALSE(bench.init(buildArchive({large})));
    const QByteArray both = zip64Record + zip64Locator;
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x")}, {.entries = 65535, .beforeEnd = both})));
    EXPECT_FALSE(bench.init(
        buildArchive({storedEntry("a", "x")}, {.directoryOffset = 0xFFFFFFFF, .beforeEnd = both})));
    const QByteArray nonsense = littleEndian32(0x06064B50) + QByteArray(52, '\0') + zip64Locator;
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x")}, {.beforeEnd = nonsense})));
    EXPECT_EQ(bench.errors,
        (QStringList{u"Invalid center header@0"_s, u"Unknown header@-1"_s, u"Unknown header@-1"_s,
            u"Unknown header@0"_s}));
}

TEST(UnzipInit, LooksForTheEndBackwardsWhereTheWayForwardFails)
{
    UnzipBench bench;
    BuiltEntry streamed = deflatedEntry("a", "content of a");
    streamed.localSignature = 0x12345678; // nothing leads on from here
    ASSERT_TRUE(bench.init(buildArchive({streamed, storedEntry("b", "y")}, {.comment = "PK\5\6 and more"})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.reader.Count(), 2);
    EXPECT_EQ(bench.reader.Comments(), u"PK\5\6 and more"_s);
    // Zeros fill up a pipe's last block; other bytes make it another file.
    EXPECT_TRUE(bench.init(buildArchive({streamed}, {.comment = "c"}) + QByteArray(9000, '\0')));
    EXPECT_EQ(bench.reader.Comments(), u"c"_s);
    EXPECT_FALSE(bench.init(buildArchive({streamed}, {.comment = "c"}) + "x"));
    // Without an end the scan's own word stands.
    EXPECT_FALSE(bench.init(buildArchive({streamed}, {.comment = "c"}).chopped(2)));
    EXPECT_FALSE(bench.init(buildArchive({streamed}, {.comment = "c", .directoryOffset = 5})));
    EXPECT_EQ(
        bench.errors, (QStringList{u"Unknown header@-1"_s, u"Unknown header@-1"_s, u"Unknown header@-1"_s}));
}

TEST(UnzipInit, RefusesAMultiDiskArchive)
{
    UnzipBench bench;
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x")}, {.disk = 1})));
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x")}, {.comment = "c", .disk = 1})));
    EXPECT_EQ(bench.errors, (QStringList{u"Unknown header@-1"_s, u"Unknown header@0"_s}));
}

TEST(UnzipInit, CountsTheEntriesOfThisDisk)
{
    UnzipBench bench;
    QByteArray archive = buildArchive({storedEntry("a", "x"), storedEntry("b", "y")});
    archive.replace(archive.size() - 12, 2, littleEndian16(7)); // those of all disks
    ASSERT_TRUE(bench.init(archive));
    EXPECT_EQ(bench.reader.Count(), 2);
    archive.replace(archive.size() - 14, 2, littleEndian16(1));
    ASSERT_TRUE(bench.init(archive));
    EXPECT_EQ(bench.reader.Count(), 1);
}
