#include "archive/unzip.h"
#include "archive/unzip_bench.h"
#include "archive/zip_builder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::Unzip;

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
    EXPECT_EQ(
        QDir(bench.systemTarget()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList(u"Data"_s));
}

TEST(Unzip, KeepsEntriesApartThatDifferInLetterCase)
{
    UnzipBench bench;
    ASSERT_TRUE(QDir().mkpath(bench.systemTarget()));
    if (QDir(bench.systemTarget().toUpper()).exists())
        GTEST_SKIP() << "This file system does not tell letter cases apart.";
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
    const QByteArray content(600, 'a');
    const QByteArray first
        = QByteArray("\0", 1) + littleEndian16(600) + littleEndian16(0xFFFF - 600) + content;
    BuiltEntry entry{.name = "f", .data = first + "\x07", .uncompressedSize = 500000, .method = 8};
    EXPECT_TRUE(bench.run(buildArchive({entry, storedEntry("b", "y")})));
    EXPECT_EQ(bench.errors, QStringList{u"Error in compressed data@0"_s});
    EXPECT_EQ(bench.content(u"f"_s), content + QByteArray(499400, '\0'));
    EXPECT_EQ(bench.progress, QStringList{u"0: 605/606"_s});
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
