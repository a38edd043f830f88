#include "archive/unzip_bench.h"
#include "archive/zip_builder.h"
#include "support/file_size_limit.h"
#include "support/small_disk.h"

#include <QRandomGenerator>
#include <QStorageInfo>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::test::FileSizeLimit;
using plum::test::SmallDisk;

namespace {

qint64 memory(const QByteArray &field)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.sliced(field.size()).trimmed().chopped(3).toLongLong() * 1024;
    }
    return 0;
}

// How much more memory the process has used at any time since this was made; nothing where it cannot be told.
class MemoryUse
{
public:
    MemoryUse()
    {
        QFile clear(u"/proc/self/clear_refs"_s); // starts the peak anew
        m_isKnown = clear.open(QIODevice::WriteOnly) && clear.write("5") == 1;
#ifdef __SANITIZE_ADDRESS__
        m_isKnown = false; // its own memory hides that of the program
#endif
        m_before = memory("VmRSS:");
    }

    std::optional<qint64> most() const
    {
        return m_isKnown ? std::optional(memory("VmHWM:") - m_before) : std::nullopt;
    }

private:
    bool m_isKnown = false;
    qint64 m_before = 0;
};

constexpr qint64 littleMemory = 4 << 20; // bytes
constexpr qint64 largestEntry = 0x7FFFFFFF; // bytes, what the format's 32 bits hold here

// Two gibibytes of zeros in two mebibytes.
BuiltEntry largestZeros(const QByteArray &name)
{
    // Blocks that end on a byte boundary, so that they can be repeated.
    constexpr qsizetype blockSize = 1 << 24;
    static const QByteArray data = flushed(QByteArray(blockSize, '\0')).repeated(largestEntry / blockSize)
        + deflated(QByteArray(largestEntry % blockSize, '\0'));
    return {.name = name, .data = data, .uncompressedSize = largestEntry, .method = 8};
}

// Ten gibibytes in ten mebibytes.
QByteArray bomb()
{
    QList<BuiltEntry> entries;
    for (const char *name : {"f0", "f1", "f2", "f3", "f4"})
        entries += largestZeros(name);
    return buildArchive(entries);
}

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator(3).generate(bytes.begin(), bytes.end());
    return bytes;
}

// That the file of each of these entries could not be written.
QStringList noRoomFor(const UnzipBench &bench, const QStringList &names)
{
    QStringList errors;
    for (const QString &name : names)
        errors += u"Error mapping file %1\\%2@%3"_s.arg(bench.targetPath(), name).arg(errors.size());
    return errors;
}

const QStringList bombNames{u"f0"_s, u"f1"_s, u"f2"_s, u"f3"_s, u"f4"_s};

} // namespace

TEST(UnzipBomb, OfOverlappingEntriesOnlyTheFirstIsUnpacked)
{
    UnzipBench bench;
    QList<BuiltEntry> entries{deflatedEntry("f0", QByteArray(1000000, 'x'))};
    for (int i = 1; i < 50; ++i) {
        BuiltEntry entry = entries[0];
        entry.name = "f" + QByteArray::number(i);
        entry.localOffset = 0;
        entries += entry;
    }
    ASSERT_TRUE(bench.run(buildArchive(entries)));
    EXPECT_EQ(bench.errors.size(), 49);
    EXPECT_EQ(bench.errors.value(0), u"Entry overlaps another@1"_s);
    EXPECT_EQ(bench.content(u"f0"_s), QByteArray(1000000, 'x'));
    EXPECT_EQ(bench.everything(), (QStringList{u"a.wfp"_s, u"target"_s, u"target/f0"_s}));
}

TEST(UnzipBomb, TheLargestCountOfEntriesIsRead)
{
    UnzipBench bench;
    QList<BuiltEntry> entries;
    for (int i = 0; i < 65535; ++i)
        entries += storedEntry("d/" + QByteArray::number(i), "x");
    ASSERT_TRUE(bench.run(buildArchive(entries), u"*777"_s));
    EXPECT_EQ(bench.reader.Count(), 65535);
    EXPECT_EQ(QDir(bench.systemTarget() + u"/d"_s).entryList(QDir::Files).size(), 65);
}

TEST(UnzipBomb, APackageOf24KibibytesDoesNotWriteTwoGibibytes)
{
    constexpr qsizetype content = 10'000'000;
    UnzipBench bench;
    QList<BuiltEntry> entries{deflatedEntry("f0", QByteArray(content, '\0'))};
    BuiltEntry same = entries[0];
    same.compressedSize = same.data.size();
    same.data.clear();
    same.localOffset = 0;
    while (entries.size() < 215) {
        same.name = "f" + QByteArray::number(entries.size());
        entries += same;
    }
    const QByteArray archive = buildArchive(entries);
    EXPECT_LT(archive.size(), 28'000);
    ASSERT_TRUE(bench.run(archive));
    EXPECT_EQ(bench.everything(), (QStringList{u"a.wfp"_s, u"target"_s, u"target/f0"_s}));
    EXPECT_EQ(QFileInfo(bench.systemTarget() + u"/f0"_s).size(), content);
}

TEST(UnzipBomb, AClaimThatTheDataCannotHoldIsRefused)
{
    UnzipBench bench;
    QList<BuiltEntry> entries;
    for (int i = 0; i < 200; ++i) {
        BuiltEntry entry = deflatedEntry("f" + QByteArray::number(i), "small");
        entry.uncompressedSize = 0x7FFFFFFF;
        entries += entry;
    }
    ASSERT_TRUE(bench.run(buildArchive(entries)));
    EXPECT_EQ(bench.errors.size(), 200);
    EXPECT_EQ(bench.errors.value(199), u"Size not supported@199"_s);
    EXPECT_FALSE(bench.has(u"f0"_s));
}

TEST(UnzipBomb, AnEntryOfTwoGibibytesFitsInLittleMemory)
{
    UnzipBench bench;
    if (QStorageInfo(bench.folder.path()).bytesAvailable() < largestEntry + (qint64{1} << 30))
        GTEST_SKIP() << "not enough room on the disk";
    bench.write(buildArchive({largestZeros("f")}));
    const MemoryUse use;
    ASSERT_TRUE(bench.reader.Init(bench.archivePath()));
    ASSERT_TRUE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_LT(use.most().value_or(0), littleMemory);
    EXPECT_EQ(QFileInfo(bench.systemTarget() + u"/f"_s).size(), largestEntry);
}

TEST(UnzipBomb, TenGibibytesFromTenMebibytesEndWhereTheDiskEnds)
{
    UnzipBench bench;
    const SmallDisk disk(bench.systemTarget(), 16 << 20);
    if (!disk.isThere())
        GTEST_SKIP() << "no right to make a small disk";
    const QByteArray archive = bomb();
    EXPECT_LT(archive.size(), 11 << 20);
    bench.write(archive);
    const MemoryUse use;
    ASSERT_TRUE(bench.reader.Init(bench.archivePath()));
    EXPECT_TRUE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors, noRoomFor(bench, bombNames));
    EXPECT_TRUE(bench.reader.ranOutOfRoom());
    EXPECT_LT(use.most().value_or(0), littleMemory);
}

TEST(UnzipBomb, TenGibibytesFromTenMebibytesEndAtALimitOfFileSizes)
{
    UnzipBench bench;
    bench.write(bomb());
    const FileSizeLimit limit(1 << 20);
    ASSERT_TRUE(bench.reader.Init(bench.archivePath()));
    EXPECT_TRUE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors, noRoomFor(bench, bombNames));
    EXPECT_TRUE(bench.reader.ranOutOfRoom());
    for (const QString &name : bombNames)
        EXPECT_EQ(QFileInfo(bench.systemTarget() + u'/' + name).size(), 0);
}

TEST(UnzipBomb, AFullDiskIsToldForEveryKindOfEntryAndTheOthersArrive)
{
    UnzipBench bench;
    const QByteArray content = noise(200'000);
    bench.write(buildArchive(
        {storedEntry("stored", content), deflatedEntry("deflated", content), deflatedEntry("short", "x")}));
    const FileSizeLimit limit(100'000);
    ASSERT_TRUE(bench.reader.Init(bench.archivePath()));
    EXPECT_TRUE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors, noRoomFor(bench, {u"stored"_s, u"deflated"_s}));
    EXPECT_EQ(bench.reader.LastError() + u"@1"_s, bench.errors.last());
    EXPECT_TRUE(bench.reader.ranOutOfRoom());
    EXPECT_EQ(bench.content(u"short"_s), "x");
}

TEST(UnzipBomb, OtherFailuresAreNotTakenForAFullDisk)
{
    UnzipBench bench;
    bench.write(buildArchive({storedEntry("f", noise(200'000))}));
    ASSERT_TRUE(bench.reader.Init(bench.archivePath()));
    {
        const FileSizeLimit limit(100'000);
        EXPECT_TRUE(bench.reader.unzip(bench.targetPath()));
    }
    EXPECT_TRUE(bench.reader.ranOutOfRoom());

    BuiltEntry damaged = deflatedEntry("g", "content");
    damaged.data[0] = 7;
    BuiltEntry endless = storedEntry("h", "x");
    endless.uncompressedSize = 0x80000000; // below zero to a reader of signed numbers
    ASSERT_TRUE(bench.run(buildArchive({damaged, endless, storedEntry("../up", "x")})));
    EXPECT_EQ(bench.errors.size(), 4);
    EXPECT_FALSE(bench.reader.ranOutOfRoom());
}

TEST(UnzipBomb, AnArchiveInAnArchiveStaysOne)
{
    UnzipBench bench;
    QByteArray archive = buildArchive({storedEntry("innermost", "x")});
    for (int depth = 0; depth < 20; ++depth)
        archive = buildArchive({deflatedEntry("0.zip", archive), deflatedEntry("1.zip", archive)});
    ASSERT_TRUE(bench.run(buildArchive({deflatedEntry("inner.zip", archive)})));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.everything(), (QStringList{u"a.wfp"_s, u"target"_s, u"target/inner.zip"_s}));
    EXPECT_EQ(bench.content(u"inner.zip"_s), archive);
}
