#include "archive/zip_directory.h"

#include "archive/archive_file.h"
#include "archive/zip_format.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace plum {

namespace {

using Problem = ZipDirectory::Problem;

// Where the directory begins by the end record at `position`, unless only ZIP64's record knows it.
ZipDirectory directoryBy(ArchiveFile &archive, const zip::End &end, qint64 position)
{
    const auto before = archive.view(position - zip::zip64LocatorSize, zip::zip64LocatorSize);
    const bool hasZip64 = before && zip::signature(*before) == zip::zip64LocatorSignature;
    if (end.isMultiDisk() || (hasZip64 && end.isFull()))
        return {.problem = Problem::UnknownHeader};
    return {.start = static_cast<qint32>(end.directoryOffset), .count = end.entries};
}

// From one local header to the next.
ZipDirectory scanForDirectory(ArchiveFile &archive)
{
    ZipDirectory directory;
    for (;;) {
        const auto bytes = archive.view(directory.start, zip::localSize);
        if (!bytes)
            return {.problem = Problem::Unreadable};
        const zip::Local header(*bytes);
        if (header.signature == zip::centralSignature)
            return directory;
        if (header.signature == zip::descriptorSignature) {
            directory.start += zip::descriptorSize;
        } else if (header.signature == zip::localSignature && header.compressedSize >= 0
            && directory.count < std::numeric_limits<int>::max()) {
            ++directory.count;
            directory.start += header.size() + header.compressedSize;
        } else {
            return {.problem = Problem::UnknownHeader};
        }
    }
}

// By an end record that leads to a directory, and behind which there is nothing but its comment and zeros,
// with which programs that write to a pipe fill their last block.
ZipDirectory directoryBehindComment(ArchiveFile &archive)
{
    constexpr qint64 longestComment = 0xFFFF;
    const qint64 from = std::max<qint64>(archive.size() - zip::endSize - longestComment, 0);
    const auto bytes = archive.view(from, archive.size() - from);
    if (!bytes)
        return {.problem = Problem::Unreadable};
    const auto lastByte = std::find_if(bytes->rbegin(), bytes->rend(), [](quint8 byte) { return byte != 0; });
    const auto zerosFrom = static_cast<size_t>(bytes->rend() - lastByte);
    std::vector<std::pair<qint64, zip::End>> found; // the bytes are gone with the next look into the archive
    for (size_t at = bytes->size() - zip::endSize + 1; at-- > 0;) {
        const zip::Bytes record = bytes->subspan(at, zip::endSize);
        if (zip::signature(record) != zip::endSignature)
            continue;
        const size_t end = at + zip::endSize + zip::End(record).commentLength;
        if (end >= zerosFrom && end <= bytes->size())
            found.emplace_back(from + static_cast<qint64>(at), zip::End(record));
    }
    for (const auto &[position, end] : found) {
        const ZipDirectory directory = directoryBy(archive, end, position);
        const auto header = archive.view(directory.start, zip::centralSize);
        if (directory.problem == Problem::None && header && zip::signature(*header) == zip::centralSignature)
            return directory;
    }
    return {.problem = Problem::UnknownHeader};
}

} // namespace

ZipDirectory findZipDirectory(ArchiveFile &archive)
{
    const qint64 last = archive.size() - zip::endSize;
    const auto bytes = archive.view(last, zip::endSize);
    if (!bytes)
        return {.problem = Problem::Unreadable};
    if (zip::signature(*bytes) == zip::endSignature)
        return directoryBy(archive, zip::End(*bytes), last);
    const ZipDirectory scanned = scanForDirectory(archive);
    if (scanned.problem == Problem::None)
        return scanned;
    const ZipDirectory found = directoryBehindComment(archive);
    return found.problem == Problem::None ? found : scanned;
}

} // namespace plum
