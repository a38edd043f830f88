// Reading an archive and unpacking it: no fault, and nothing beside the target folder.

#include "archive/unzip.h"
#include "platform/recording/recording_platform.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

// Sizes are taken at their word, so an entry may fill up to 2 GiB with what follows from a few bytes.
constexpr qint32 largestEntry = 1 << 20;
constexpr int mostEntries = 50;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.wfp"));
    const QString target = folder.filePath(QStringLiteral("target"));
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    file.close();

    plum::recording::RecordingPaths paths;
    plum::recording::RecordingTextCodec codec;
    plum::Unzip reader(paths, codec);
    if (!reader.Init(path)) {
        if (reader.Count() != 0 || reader.LastError().isEmpty())
            std::abort();
        return 0;
    }
    std::vector<bool> wanted;
    for (int i = 0; i < std::min(reader.Count(), mostEntries); ++i)
        wanted.push_back(reader.EntryInfo(i).uncompressedSize <= largestEntry);
    reader.unzip(target, wanted);
    QDir(target).removeRecursively();
    if (QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size() != 1)
        std::abort();
    return 0;
}
