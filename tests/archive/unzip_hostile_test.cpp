#include "archive/extraction_folder.h"
#include "archive/reference_inflate.h"
#include "archive/unzip_bench.h"
#include "archive/zip_builder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::ZipEntry;

namespace {

const QString outside = u"Error creating output folder"_s;

// What one entry's file holds and what is reported for it, worked out from the archive's bytes in the
// plainest way. Entries that the archive's own header sends elsewhere have no content.
struct Expected
{
    QStringList errors;
    std::optional<QByteArray> head; // what was decoded; the rest of the file is zero
    bool stops = false;
};

quint32 number(const QByteArray &bytes, qint64 at, int size)
{
    quint32 value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | static_cast<quint8>(bytes[at + i]);
    return value;
}

Expected expect(const QByteArray &archive, const ZipEntry &entry, const QString &archivePath)
{
    Expected expected;
    const qint64 header = entry.localHeaderOffset;
    const QString mapping = u"Error mapping file "_s + archivePath;
    if (header < 0 || header + 30 > archive.size()) {
        expected.errors += mapping;
        expected.stops = true;
        return expected;
    }
    if (number(archive, header, 4) != 0x04034B50)
        expected.errors += u"Invalid signature"_s;
    if (entry.flags & 1) {
        expected.errors += u"Encryption not supported"_s;
        return expected;
    }
    if (entry.method != 0 && entry.method != 8 && entry.method != 9) {
        const bool isReduced = entry.method >= 2 && entry.method <= 5;
        expected.errors += isReduced ? u"UnReduce not supported"_s : u"Compression not supported"_s;
        return expected;
    }
    if (entry.uncompressedSize
        > (30 + std::max<qint64>(entry.compressedSize, 0)) * (entry.method == 9 ? 29128 : 1032)) {
        expected.errors += u"Size not supported"_s;
        return expected;
    }
    const qint64 start = header + 30 + number(archive, header + 26, 2) + number(archive, header + 28, 2);
    const qint64 size = std::max(entry.compressedSize, 0);
    if (size > 0 && start + size > archive.size()) {
        expected.errors += mapping;
        return expected;
    }
    if (entry.uncompressedSize < 0) {
        expected.errors += u"Error mapping file"_s; // of the output, whose path the test knows
        return expected;
    }
    expected.head.emplace();
    if (entry.uncompressedSize == 0)
        return expected;
    const QByteArray data = size > 0 ? archive.sliced(start, size) : QByteArray();
    if (entry.method == 0) {
        expected.head = data.first(std::min<qint64>(size, entry.uncompressedSize));
        if (expected.head->size() < entry.uncompressedSize)
            expected.errors += u"InStream depleated"_s;
        return expected;
    }
    const std::span bytes(reinterpret_cast<const quint8 *>(data.data()), static_cast<size_t>(size));
    const auto decoded = plum::reference::inflate(bytes, entry.uncompressedSize, entry.method == 9);
    expected.head = QByteArray(
        reinterpret_cast<const char *>(decoded.bytes.data()), static_cast<qsizetype>(decoded.bytes.size()));
    if (!decoded.message.isEmpty())
        expected.errors += decoded.message;
    return expected;
}

// Unpacks a damaged archive of one entry and compares with what is expected of it.
void check(UnzipBench &bench, const QByteArray &archive, const QString &what)
{
    SCOPED_TRACE(what.toStdString());
    bench.reset();
    const bool isRead = bench.init(archive);
    EXPECT_EQ(isRead, bench.errors.isEmpty());
    if (!isRead) {
        EXPECT_EQ(bench.reader.Count(), 0);
        return;
    }
    if (bench.reader.Count() != 1)
        return;
    const ZipEntry entry = bench.reader.EntryInfo(0);
    if (entry.isFolder)
        return;
    const bool isDone = bench.reader.unzip(bench.targetPath());
    for (const QString &name : bench.everything())
        EXPECT_TRUE(name == u"a.wfp"_s || name.startsWith(u"target"_s)) << name.toStdString();
    if (bench.errors.contains(outside + u"@0"_s) || bench.errors.join(u' ').contains(bench.targetPath()))
        return; // the name was hit

    const Expected expected = expect(archive, entry, bench.archivePath());
    QStringList errors;
    for (const QString &error : expected.errors)
        errors += error + u"@0"_s;
    EXPECT_EQ(bench.errors, errors);
    EXPECT_EQ(isDone, !expected.stops);
    QFile file(bench.systemTarget() + u'/' + QString(entry.fileName).replace(u'\\', u'/'));
    EXPECT_EQ(file.exists(), expected.head.has_value());
    if (expected.head && file.open(QIODevice::ReadOnly)) {
        EXPECT_EQ(file.size(), entry.uncompressedSize);
        EXPECT_EQ(file.read(expected.head->size()), *expected.head);
        const QByteArray rest = file.read(100000);
        EXPECT_EQ(rest.count('\0'), rest.size());
    }
}

QList<QByteArray> smallArchives()
{
    const QByteArray content = "mouse.click \"1:2\"\r\nmouse.click \"3:4\"\r\nmouse.click \"5:6\"\r\n";
    BuiltEntry deflate64 = deflatedEntry("f", content);
    deflate64.method = 9;
    return {buildArchive({storedEntry("f", content)}), buildArchive({deflatedEntry("d/f", content)}),
        buildArchive({deflate64}), buildArchive({deflatedEntry("f", content)}, {.comment = "comment"})};
}

} // namespace

TEST(UnzipHostile, EveryTruncationIsHandledLikeTheReference)
{
    UnzipBench bench;
    for (const QByteArray &archive : smallArchives()) {
        for (qsizetype size = 0; size < archive.size(); ++size)
            check(bench, archive.first(size), u"%1 bytes"_s.arg(size));
    }
}

TEST(UnzipHostile, EveryFlippedBitIsHandledLikeTheReference)
{
    UnzipBench bench;
    for (const QByteArray &archive : smallArchives()) {
        for (qsizetype bit = 0; bit < archive.size() * 8; ++bit) {
            QByteArray damaged = archive;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
            check(bench, damaged, u"bit %1"_s.arg(bit));
        }
    }
}

TEST(UnzipHostile, NamesThatLeaveTheTargetAreSkipped)
{
    const QList<QByteArray> names{"../f", "..\\f", "d/../../f", "d/..", "/f", "\\f", "//server/share/f",
        "\\\\server\\share\\f", "\\\\?\\C:\\f", "C:\\f", "c:f", "d/c:f", "f:stream", ".. /f", "... /../f",
        "../target/../f", QByteArray("f\0g", 3), QByteArray("\0", 1)};
    for (const QByteArray &name : names) {
        SCOPED_TRACE(name.toPercentEncoding().constData());
        UnzipBench bench;
        ASSERT_TRUE(bench.run(buildArchive({storedEntry(name, "x"), storedEntry("good", "y")})));
        EXPECT_EQ(bench.errors, QStringList{outside + u"@0"_s});
        EXPECT_EQ(bench.everything(), (QStringList{u"a.wfp"_s, u"target"_s, u"target/good"_s}));
    }
}

TEST(UnzipHostile, NamesOfDevicesAreRefusedWhereTheSystemHasThem)
{
    for (const QString &name : {u"nul"_s, u"NUL.txt"_s, u"d\\con"_s, u"com1"_s, u"LPT9.log"_s, u"aux "_s,
             u"aux\\f"_s, u"CONIN$"_s}) {
        EXPECT_FALSE(plum::staysInside(name, true)) << name.toStdString();
        EXPECT_TRUE(plum::staysInside(name, false)) << name.toStdString();
    }
    for (const QString &name : {u"com"_s, u"com0x"_s, u"nully"_s, u"xnul"_s, u"d.nul"_s})
        EXPECT_TRUE(plum::staysInside(name, true)) << name.toStdString();
    for (const bool interpreted : {true, false}) {
        UnzipBench bench;
        bench.paths.namesAreInterpreted = interpreted;
        ASSERT_TRUE(bench.run(buildArchive({storedEntry("aux/con.txt", "x")})));
        EXPECT_EQ(bench.has(u"aux/con.txt"_s), !interpreted);
    }
}

TEST(UnzipHostile, FolderEntriesThatLeaveTheTargetAreSkipped)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.run(
        buildArchive({storedEntry("../d/", {}), storedEntry("/tmp/d/", {}), storedEntry("good/", {})})));
    EXPECT_EQ(bench.errors, (QStringList{outside + u"@0"_s, outside + u"@1"_s}));
    EXPECT_EQ(bench.everything(), (QStringList{u"a.wfp"_s, u"target"_s, u"target/good"_s}));
}

TEST(UnzipHostile, NamesThatOnlyLookBadAreWritten)
{
    UnzipBench bench;
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("..f", "1"), storedEntry("d..d/f..", "2"),
        storedEntry("./e//./f", "3"), storedEntry("com0x", "4"), storedEntry("nully", "5")})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.content(u"..f"_s), "1");
    EXPECT_EQ(bench.content(u"d..d/f.."_s), "2");
    EXPECT_EQ(bench.content(u"e/f"_s), "3");
    EXPECT_EQ(bench.content(u"com0x"_s), "4");
    EXPECT_EQ(bench.content(u"nully"_s), "5");
}

TEST(UnzipHostile, LinksBelowTheTargetLeadNowhere)
{
    UnzipBench bench;
    const QDir folder(bench.folder.path());
    ASSERT_TRUE(folder.mkpath(u"elsewhere"_s) && folder.mkpath(u"target"_s));
    ASSERT_TRUE(QFile::link(folder.filePath(u"elsewhere"_s), folder.filePath(u"target/link"_s)));
    ASSERT_TRUE(QFile::link(folder.filePath(u"elsewhere/f"_s), folder.filePath(u"target/f"_s)));
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("link/f", "x"), storedEntry("LINK/f", "x"),
        storedEntry("link/d/", {}), storedEntry("f", "x"), storedEntry("good", "y")})));
    EXPECT_EQ(bench.errors,
        (QStringList{outside + u"@0"_s, outside + u"@1"_s, outside + u"@2"_s, outside + u"@3"_s}));
    EXPECT_TRUE(QDir(folder.filePath(u"elsewhere"_s)).isEmpty());
    EXPECT_EQ(bench.content(u"good"_s), "y");
}

TEST(UnzipHostile, ATargetThatIsALinkItselfIsFine)
{
    UnzipBench bench;
    const QDir folder(bench.folder.path());
    ASSERT_TRUE(folder.mkpath(u"elsewhere"_s));
    ASSERT_TRUE(QFile::link(folder.filePath(u"elsewhere"_s), folder.filePath(u"target"_s)));
    ASSERT_TRUE(bench.run(buildArchive({storedEntry("f", "x")})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_TRUE(folder.exists(u"elsewhere/f"_s));
}

TEST(UnzipHostile, StoredLinksBecomePlainFiles)
{
    UnzipBench bench;
    BuiltEntry link = storedEntry("link", "/etc/passwd");
    link.externalAttributes = 0xA1FF0000;
    ASSERT_TRUE(bench.run(buildArchive({link, storedEntry("link/f", "x")})));
    EXPECT_FALSE(QFileInfo(bench.systemTarget() + u"/link"_s).isSymLink());
    EXPECT_EQ(bench.content(u"link"_s), "/etc/passwd");
    EXPECT_EQ(bench.errors, QStringList{outside + u"@1"_s});
}

TEST(UnzipHostile, NamesInOtherEncodingsGoThroughTheSystemsEncoding)
{
    UnzipBench bench;
    ASSERT_TRUE(
        bench.run(buildArchive({storedEntry("\xE5\x90\x8D", "utf-8"), storedEntry("\xC3\xFB", "gbk")})));
    EXPECT_EQ(bench.content(u"名"_s), "utf-8");
    EXPECT_EQ(bench.reader.Count(), 2);
    EXPECT_EQ(QDir(bench.systemTarget()).entryList(QDir::Files).size(), 2);
}
