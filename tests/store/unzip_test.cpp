#include "store/unzip.h"
#include "store/unzip_bench.h"
#include "store/zip_builder.h"

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

TEST(UnzipInit, FailsOnASizeThatLeadsTheScanBack)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("a", "x");
    entry.compressedSize = 0xFFFFFFE0;
    EXPECT_FALSE(bench.init(buildArchive({entry}, {.comment = "c"})));
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

TEST(UnzipInit, RefusesZip64)
{
    UnzipBench bench;
    BuiltEntry large = storedEntry("a", "x");
    large.compressedSize = 0xFFFFFFFF;
    EXPECT_FALSE(bench.init(buildArchive({large})));
    const QByteArray record = littleEndian32(0x06064B50) + QByteArray(52, '\0');
    const QByteArray locator = littleEndian32(0x07064B50) + QByteArray(16, '\0');
    EXPECT_FALSE(bench.init(buildArchive({storedEntry("a", "x")}, {.beforeEnd = record + locator})));
    EXPECT_FALSE(
        bench.init(buildArchive({storedEntry("a", "x")}, {.comment = "c", .beforeEnd = record + locator})));
    EXPECT_EQ(bench.errors,
        (QStringList{u"Invalid center header@0"_s, u"Unknown header@-1"_s, u"Unknown header@0"_s}));
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

TEST(Unzip, WritesFilesAndFolders)
{
    UnzipBench bench;
    const QByteArray large(300000, 'L');
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("empty/", {}), storedEntry("stored.txt", "as it is"),
        deflatedEntry("deep/er/large.bin", large), storedEntry("deep/stored.bin", large)})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.reader.LastError(), QString());
    EXPECT_TRUE(QFileInfo(bench.systemTarget() + u"/empty"_s).isDir());
    EXPECT_EQ(bench.content(u"stored.txt"_s), "as it is");
    EXPECT_EQ(bench.content(u"deep/er/large.bin"_s), large);
    EXPECT_EQ(bench.content(u"deep/stored.bin"_s), large);
}

TEST(Unzip, TakesATargetWithASeparatorAtItsEnd)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.init(buildArchive({storedEntry("a", "x")})));
    EXPECT_TRUE(bench.reader.unzip(bench.targetPath() + u"\\"_s));
    EXPECT_EQ(bench.content(u"a"_s), "x");
}

TEST(Unzip, OverwritesFiles)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("a", "a long content")})));
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("a", "short")})));
    EXPECT_EQ(bench.content(u"a"_s), "short");
}

TEST(Unzip, UsesAFolderThatIsThereInAnotherLetterCase)
{
    UnzipBench bench;
    ASSERT_TRUE(QDir().mkpath(bench.systemTarget() + u"/Data"_s));
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("data/a", "x"), storedEntry("data/b", "y")})));
    EXPECT_EQ(bench.content(u"Data/a"_s), "x");
    EXPECT_EQ(bench.content(u"Data/b"_s), "y");
    EXPECT_FALSE(bench.has(u"data"_s));
}

TEST(Unzip, KeepsEntriesApartThatDifferInLetterCase)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("A/f", "x"), storedEntry("a/f", "y")})));
    EXPECT_EQ(bench.content(u"A/f"_s), "x");
    EXPECT_EQ(bench.content(u"a/f"_s), "y");
}

TEST(Unzip, RaisesProgressAfterEachBlock)
{
    UnzipBench bench;
    const QByteArray first = QByteArray("\0", 1) + littleEndian16(3) + littleEndian16(0xFFFC) + "abc";
    const QByteArray second = deflated("dddddddddd");
    BuiltEntry entry{.name = "f", .data = first + second, .uncompressedSize = 13, .method = 8};
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("no progress", "x"), entry})));
    const QString total = QString::number(8 + second.size());
    EXPECT_EQ(bench.progress, (QStringList{u"1: 8/"_s + total, u"1: "_s + total + u'/' + total}));
}

TEST(Unzip, SetsTheTimes)
{
    UnzipBench bench;
    const QDateTime before = QDateTime::currentDateTime().addSecs(-2);
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("empty", {}), deflatedEntry("f", "ffffffffff")})));
    for (const QString &name : {u"empty"_s, u"f"_s}) {
        const QFileInfo info(bench.systemTarget() + u'/' + name);
        EXPECT_EQ(info.lastModified(), QDateTime(QDate(2021, 3, 14), QTime(12, 34, 56)));
        EXPECT_GE(info.lastRead(), before);
    }
    EXPECT_EQ(bench.content(u"empty"_s), "");
}

TEST(Unzip, LeavesTheTimeOfExtractionWithoutADate)
{
    UnzipBench bench;
    const QDateTime before = QDateTime::currentDateTime().addSecs(-2);
    BuiltEntry entry = storedEntry("f", "x");
    entry.date = entry.time = 0;
    ASSERT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_GE(QFileInfo(bench.systemTarget() + u"/f"_s).lastModified(), before);
}

TEST(Unzip, DoesNotNoticeAWrongChecksum)
{
    UnzipBench bench;
    BuiltEntry entry = deflatedEntry("f", "content");
    entry.crc = 1;
    EXPECT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.content(u"f"_s), "content");
}

TEST(Unzip, ExtractsAnEntryWithADamagedLocalSignature)
{
    UnzipBench bench;
    BuiltEntry entry = deflatedEntry("f", "content");
    entry.localSignature = 0xDEADBEEF;
    EXPECT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_EQ(bench.errors, QStringList{u"Invalid signature@0"_s});
    EXPECT_EQ(bench.content(u"f"_s), "content");
}

TEST(Unzip, FindsTheDataByTheLocalLengths)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("f", "content");
    entry.localExtra = "more than the directory says";
    entry.localName = "another name";
    EXPECT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_EQ(bench.content(u"f"_s), "content");
}

TEST(Unzip, SkipsAnEncryptedEntryAndGoesOn)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("secret", "x");
    entry.flags = 1;
    EXPECT_TRUE(bench.run(buildArchive({entry, storedEntry("b", "y")})));
    EXPECT_EQ(bench.errors, QStringList{u"Encryption not supported@0"_s});
    EXPECT_FALSE(bench.has(u"secret"_s));
    EXPECT_EQ(bench.content(u"b"_s), "y");
}

TEST(Unzip, SkipsUnknownMethods)
{
    UnzipBench bench;
    QList<BuiltEntry> entries;
    QStringList expected;
    for (const int method : {1, 2, 3, 4, 5, 6, 7, 10, 12, 14, 99, 0xFFFF}) {
        BuiltEntry entry = storedEntry("m" + QByteArray::number(method), "x");
        entry.method = static_cast<quint16>(method);
        const bool isReduced = method >= 2 && method <= 5;
        expected += (isReduced ? u"UnReduce not supported@"_s : u"Compression not supported@"_s)
            + QString::number(entries.size());
        entries += entry;
    }
    EXPECT_TRUE(bench.run(buildArchive(entries)));
    EXPECT_EQ(bench.errors, expected);
    EXPECT_FALSE(bench.has(u""_s));
}

TEST(Unzip, ChecksEncryptionBeforeTheMethodAndTheSignatureFirst)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("..\\f", "x");
    entry.flags = 1;
    entry.method = 3;
    entry.localSignature = 0;
    EXPECT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_EQ(bench.errors, (QStringList{u"Invalid signature@0"_s, u"Encryption not supported@0"_s}));
}

TEST(Unzip, MakesAFolderWithoutLookingAtItsLocalHeader)
{
    UnzipBench bench;
    BuiltEntry folder = storedEntry("deep/er/", {});
    folder.localOffset = 1000;
    folder.flags = 1;
    folder.method = 99;
    EXPECT_TRUE(bench.run(buildArchive({folder, storedEntry("b", "y")})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_TRUE(QFileInfo(bench.systemTarget() + u"/deep/er"_s).isDir());
}

TEST(Unzip, DecodesNothingForAnEntryWithoutContent)
{
    UnzipBench bench;
    BuiltEntry entry{.name = "f", .data = "\x07 no DEFLATE", .uncompressedSize = 0, .method = 8};
    EXPECT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.progress, QStringList());
    EXPECT_EQ(bench.content(u"f"_s), "");
}

TEST(Unzip, DecodesZeroBitsForAnEntryWithoutData)
{
    UnzipBench bench;
    BuiltEntry entry{.name = "f", .data = {}, .uncompressedSize = 3, .method = 8};
    EXPECT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_EQ(bench.errors, QStringList{u"InStream depleated@0"_s});
    EXPECT_EQ(bench.content(u"f"_s), QByteArray(3, '\0'));
}

TEST(Unzip, LeavesAFailedEntryAtFullSize)
{
    UnzipBench bench;
    const QByteArray first = QByteArray("\0", 1) + littleEndian16(3) + littleEndian16(0xFFFC) + "abc";
    BuiltEntry entry{.name = "f", .data = first + "\x07", .uncompressedSize = 500000, .method = 8};
    EXPECT_TRUE(bench.run(buildArchive({entry, storedEntry("b", "y")})));
    EXPECT_EQ(bench.errors, QStringList{u"Error in compressed data@0"_s});
    EXPECT_EQ(bench.content(u"f"_s), "abc" + QByteArray(499997, '\0'));
    EXPECT_EQ(bench.progress, QStringList{u"0: 8/9"_s});
    EXPECT_EQ(bench.content(u"b"_s), "y");
}

TEST(Unzip, LeavesAFileAtFullSizeWhenLessComesOut)
{
    UnzipBench bench;
    BuiltEntry entry = deflatedEntry("f", "abc");
    entry.uncompressedSize = 10;
    EXPECT_TRUE(bench.run(buildArchive({entry})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.content(u"f"_s), "abc" + QByteArray(7, '\0'));
}

TEST(Unzip, ReportsStoredDataThatIsTooShort)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("f", "abc");
    entry.uncompressedSize = 5;
    BuiltEntry longer = storedEntry("g", "abcdef");
    longer.uncompressedSize = 2;
    EXPECT_TRUE(bench.run(buildArchive({entry, longer})));
    EXPECT_EQ(bench.errors, QStringList{u"InStream depleated@0"_s});
    EXPECT_EQ(bench.content(u"f"_s), QByteArray("abc\0\0", 5));
    EXPECT_EQ(bench.content(u"g"_s), "ab");
}

TEST(Unzip, WritesNoFileWhenTheDataLiesOutsideTheArchive)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("f", "abc");
    entry.compressedSize = 1000;
    EXPECT_TRUE(bench.run(buildArchive({entry, storedEntry("b", "y")})));
    EXPECT_EQ(bench.errors, QStringList{u"Error mapping file "_s + bench.archivePath() + u"@0"_s});
    EXPECT_FALSE(bench.has(u"f"_s));
    EXPECT_EQ(bench.content(u"b"_s), "y");
}

TEST(Unzip, StopsAtALocalHeaderOutsideTheArchive)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("f", "abc");
    entry.localOffset = 1000;
    ASSERT_TRUE(bench.init(buildArchive({storedEntry("a", "x"), entry, storedEntry("b", "y")})));
    EXPECT_FALSE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors, QStringList{u"Error mapping file "_s + bench.archivePath() + u"@1"_s});
    EXPECT_EQ(bench.content(u"a"_s), "x");
    EXPECT_FALSE(bench.has(u"b"_s));
}

TEST(Unzip, SkipsAnEntryWithASizeBelowZero)
{
    UnzipBench bench;
    BuiltEntry entry = storedEntry("f", "abc");
    entry.uncompressedSize = 0x80000000;
    EXPECT_TRUE(bench.run(buildArchive({entry, storedEntry("b", "y")})));
    EXPECT_EQ(bench.errors, QStringList{u"Error mapping file "_s + bench.targetPath() + u"\\f@0"_s});
    EXPECT_EQ(bench.content(u"b"_s), "y");
}

TEST(Unzip, ReportsAFolderThatCannotBeMade)
{
    UnzipBench bench;
    EXPECT_TRUE(bench.run(buildArchive(
        {storedEntry("f", "x"), storedEntry("f/", {}), storedEntry("f/g", "x"), storedEntry("b", "y")})));
    EXPECT_EQ(bench.errors, (QStringList{u"Error creating folder@1"_s, u"Error creating output folder@2"_s}));
    EXPECT_EQ(bench.content(u"b"_s), "y");
}

TEST(Unzip, ReportsAFileThatCannotBeMade)
{
    UnzipBench bench;
    const QByteArray longName(4096, 'n');
    EXPECT_TRUE(bench.run(buildArchive({storedEntry("d/", {}), storedEntry("d", "x"), storedEntry("e\\", "x"),
        storedEntry("", "x"), storedEntry(longName, "x"), storedEntry("b", "y")})));
    const QString prefix = u"Error mapping file "_s + bench.targetPath() + u'\\';
    EXPECT_EQ(bench.errors,
        (QStringList{prefix + u"d@1"_s, prefix + u"e\\@2"_s, prefix + u"@3"_s,
            prefix + QString::fromLatin1(longName) + u"@4"_s}));
    EXPECT_EQ(bench.content(u"b"_s), "y");
}

TEST(UnzipFilter, TakesAListOfFlags)
{
    UnzipBench bench;
    const QByteArray archive
        = buildArchive({storedEntry("a", "x"), storedEntry("b", "y"), storedEntry("c", "z")});
    ASSERT_TRUE(bench.run(archive, std::vector{false, true})); // what the list lacks counts as false
    EXPECT_FALSE(bench.has(u"a"_s));
    EXPECT_TRUE(bench.has(u"b"_s));
    EXPECT_FALSE(bench.has(u"c"_s));
}

TEST(UnzipFilter, TakesAPattern)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("a1.txt", "x"), storedEntry("ab.txt", "x"),
                              storedEntry("sub/a2.txt", "x"), storedEntry("A3.txt", "x")}),
        u"a#.txt"_s));
    EXPECT_EQ(bench.everything(), (QStringList{u"a.wfp"_s, u"target"_s, u"target/a1.txt"_s}));
}

TEST(UnzipFilter, StarDotStarMatchesNamesWithoutExtension)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("plain", "x"), storedEntry("a.b", "x")}), u"*.*"_s));
    EXPECT_TRUE(bench.has(u"plain"_s));
    EXPECT_TRUE(bench.has(u"a.b"_s));
}

TEST(UnzipFilter, EndsOnABrokenPattern)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.init(buildArchive({storedEntry("a", "x")})));
    EXPECT_FALSE(bench.reader.unzip(bench.targetPath(), u"[a"_s));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_FALSE(bench.has(u"a"_s));
}

TEST(Unzip, SurvivesAnInitFromItsOwnEvents)
{
    UnzipBench bench;
    BuiltEntry bad = storedEntry("bad", "x");
    bad.method = 3;
    ASSERT_TRUE(bench.init(buildArchive({bad, storedEntry("b", "y")})));
    QObject::connect(
        &bench.reader, &Unzip::UnzipError, &bench.reader, [&bench] { bench.reader.Init(u"gone"_s); },
        static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection));
    bench.reader.unzip(bench.targetPath());
    EXPECT_EQ(bench.reader.Count(), 0);
}
