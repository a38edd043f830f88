#include "archive/unzip.h"

#include "archive/archive_file.h"
#include "archive/entry_streams.h"
#include "archive/extraction_folder.h"
#include "archive/wildcards.h"
#include "archive/zip_directory.h"
#include "platform/paths.h"
#include "platform/text_codec.h"

#include <algorithm>
#include <exception>
#include <numeric>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A new file is given its full size before anything is written, if it is larger than this. Smaller ones
// are written at once and need the call only when less comes out.
constexpr qint64 sizedInAdvance = ArchiveFile::windowSize;

constexpr qint64 storedPiece = 65536;

constexpr auto unknownHeader = "Unknown header"_L1;

template <class... Cases> struct Overloaded : Cases...
{
    using Cases::operator()...;
};
template <class... Cases> Overloaded(Cases...) -> Overloaded<Cases...>;

// Runs one of the class's operations; faults inside of it are its failure.
template <class Operation> bool guarded(Operation operation)
{
    try {
        return operation();
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace

struct Unzip::Entry
{
    zip::Central header;
    QString name;
    QByteArray extra;
    QByteArray comment;

    bool isFolder() const { return header.compressedSize == 0 && name.endsWith(u'\\'); }
};

Unzip::Unzip(const Paths &paths, TextCodec &codec, QObject *parent)
    : QObject(parent)
    , m_paths(paths)
    , m_codec(codec)
{
}

Unzip::~Unzip() = default;

bool Unzip::error(const QString &message)
{
    m_lastError = message;
    Q_EMIT UnzipError(message, m_index);
    return false;
}

bool Unzip::mappingError(const QString &path)
{
    return error(u"Error mapping file "_s + path);
}

bool Unzip::roomError(const QString &path)
{
    m_ranOutOfRoom = true;
    return mappingError(path);
}

bool Unzip::Init(const QString &ZipName)
{
    m_zipName = ZipName;
    m_comments.clear();
    m_index = -1;
    m_entries.clear();

    const bool isRead = guarded([this] {
        ArchiveFile archive;
        if (!archive.open(m_paths.toSystem(m_zipName)))
            return mappingError(m_zipName);
        return readDirectory(archive);
    });
    if (!isRead)
        m_entries.clear();
    return isRead;
}

bool Unzip::readDirectory(ArchiveFile &archive)
{
    const ZipDirectory directory = findZipDirectory(archive);
    if (directory.problem != ZipDirectory::Problem::None)
        return directory.problem == ZipDirectory::Problem::Unreadable ? mappingError(m_zipName)
                                                                      : error(unknownHeader);

    qint64 position = directory.start;
    for (int i = 0; i < directory.count; ++i) {
        m_index = i;
        const auto bytes = archive.view(position, zip::centralSize);
        if (!bytes)
            return mappingError(m_zipName);
        const zip::Central header(*bytes);
        if (header.signature != zip::centralSignature || header.isZip64())
            return error(u"Invalid center header"_s);
        position += zip::centralSize;

        const auto tail = archive.view(position, header.tailSize());
        if (!tail)
            return mappingError(m_zipName);
        const QByteArrayView text(tail->data(), static_cast<qsizetype>(tail->size()));
        m_entries.push_back({.header = header,
            .name = m_codec.fromSystem(text.first(header.nameLength)).replace(u'/', u'\\'),
            .extra = text.sliced(header.nameLength, header.extraLength).toByteArray(),
            .comment = text.last(header.commentLength).toByteArray()});
        position += header.tailSize();
    }
    return readComments(archive, position);
}

bool Unzip::readComments(ArchiveFile &archive, qint64 position)
{
    auto bytes = archive.view(position, zip::endSize);
    if (bytes && zip::signature(*bytes) == zip::zip64EndSignature) {
        // The plain record behind it says the same, or the directory would not have been found.
        const auto length = zip::zip64EndLength(*bytes);
        if (!length)
            return error(unknownHeader);
        position += *length + zip::zip64LocatorSize;
        bytes = archive.view(position, zip::endSize);
        if (bytes && zip::signature(*bytes) != zip::endSignature)
            return error(unknownHeader);
    }
    if (!bytes)
        return mappingError(m_zipName);
    const zip::End end(*bytes);
    if (zip::signature(*bytes) == zip::endSignature && end.isMultiDisk())
        return error(unknownHeader);
    if (end.commentLength == 0)
        return true;
    const auto text = archive.view(position + zip::endSize, end.commentLength);
    if (!text)
        return mappingError(m_zipName);
    m_comments = m_codec.fromSystem({text->data(), static_cast<qsizetype>(text->size())});
    return true;
}

int Unzip::Count() const
{
    return static_cast<int>(m_entries.size());
}

ZipEntry Unzip::EntryInfo(int index) const
{
    if (index < 0 || index >= Count())
        return {};
    const Entry &entry = m_entries[static_cast<size_t>(index)];
    const zip::Central &header = entry.header;
    return {.madeBySystem = QString::number(header.madeBy >> 8),
        .madeByVersion = zip::versionText(header.madeBy),
        .neededSystem = QString::number(header.needed >> 8),
        .neededVersion = zip::versionText(header.needed),
        .flags = header.flags,
        .method = header.method,
        .modified = zip::fromDosTime(header.date, header.time),
        .crc = header.crc,
        .compressedSize = header.compressedSize,
        .uncompressedSize = header.uncompressedSize,
        .diskNumberStart = header.diskNumberStart,
        .internalAttributes = header.internalAttributes,
        .externalAttributes = header.externalAttributes,
        .localHeaderOffset = header.localHeaderOffset,
        .fileName = entry.name,
        .isFolder = entry.isFolder(),
        .extra = entry.extra,
        .comment = m_codec.fromSystem(entry.comment)};
}

bool Unzip::unzip(const QString &folder, const Filter &filter)
{
    m_index = -1;
    m_ranOutOfRoom = false;
    const bool isDone = guarded([&] { return extractAll(folder, filter); });
    m_window = {};
    return isDone;
}

bool Unzip::extractAll(const QString &folder, const Filter &filter)
{
    ArchiveFile archive;
    if (!archive.open(m_paths.toSystem(m_zipName)))
        return mappingError(m_zipName);

    ExtractionFolder target(m_paths, folder);
    m_overlaps = overlapping(archive.size());
    // A handler of the signals may call Init, so the entry is a copy and the count is asked for every time.
    for (int i = 0; i < Count(); ++i) {
        m_index = i;
        const Entry entry = m_entries[static_cast<size_t>(i)];
        const auto selected = isSelected(filter, entry);
        if (!selected)
            return false;
        if (*selected && extract(archive, target, folder, entry) == Outcome::Stop)
            return false;
    }
    return true;
}

// Which entries lie where an earlier one in the file does. Entries that reach beyond the archive are not
// unpacked and take no bytes from others. The local header's own name and extra field are not counted: what
// is left is enough to keep all entries together from claiming more bytes than there are.
std::vector<bool> Unzip::overlapping(qint64 archiveSize) const
{
    std::vector<size_t> order(m_entries.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::ranges::stable_sort(order, {}, [this](size_t i) { return m_entries[i].header.localHeaderOffset; });
    std::vector<bool> overlaps(m_entries.size());
    qint64 end = 0;
    for (const size_t i : order) {
        const zip::Central &header = m_entries[i].header;
        overlaps[i] = header.localHeaderOffset >= 0 && header.localHeaderOffset < end;
        const qint64 entryEnd
            = qint64{header.localHeaderOffset} + zip::localSize + std::max(header.compressedSize, 0);
        if (!overlaps[i] && entryEnd <= archiveSize)
            end = entryEnd;
    }
    return overlaps;
}

// Nothing when the filter is a pattern that is none.
std::optional<bool> Unzip::isSelected(const Filter &filter, const Entry &entry) const
{
    return std::visit(Overloaded{
                          [](std::monostate) { return std::optional(true); },
                          [this](const std::vector<bool> &wanted) {
                              const auto index = static_cast<size_t>(m_index);
                              return std::optional(index < wanted.size() && wanted[index]);
                          },
                          [&entry](const QString &pattern) {
                              return matchesWildcards(entry.name, pattern == u"*.*"_s ? u"*"_s : pattern);
                          },
                      },
        filter);
}

Unzip::Outcome Unzip::extract(
    ArchiveFile &archive, ExtractionFolder &target, const QString &folder, const Entry &entry)
{
    using enum ExtractionFolder::Outcome;
    const QString path = folder + (folder.endsWith(u'\\') ? u""_s : u"\\"_s) + entry.name;
    const zip::Central &header = entry.header;
    if (entry.isFolder()) {
        const auto outcome = target.makeFolder(entry.name);
        if (outcome == Done)
            return Outcome::Done;
        error(outcome == Outside ? u"Error creating output folder"_s : u"Error creating folder"_s);
        return Outcome::EntryFailed;
    }

    const auto bytes = archive.view(header.localHeaderOffset, zip::localSize);
    if (!bytes) {
        mappingError(m_zipName);
        return Outcome::Stop;
    }
    const zip::Local local(*bytes);
    if (local.signature != zip::localSignature)
        error(u"Invalid signature"_s); // kept: what follows may be intact, and often is
    if (!isExtractable(entry))
        return Outcome::EntryFailed;

    const qint64 position = header.localHeaderOffset + local.size();
    if (header.compressedSize > 0 && position > archive.size() - header.compressedSize) {
        mappingError(m_zipName);
        return Outcome::EntryFailed;
    }
    QFile file;
    const auto outcome = target.createFile(entry.name, file);
    if (outcome == Outside || outcome == NoFolder) {
        error(u"Error creating output folder"_s);
        return Outcome::EntryFailed;
    }
    if (outcome != Done || header.uncompressedSize < 0) {
        mappingError(path);
        return Outcome::EntryFailed;
    }
    if (header.uncompressedSize > sizedInAdvance && !file.resize(header.uncompressedSize)) {
        roomError(path);
        return Outcome::EntryFailed;
    }
    return writeEntry(archive, position, entry, file, path) ? Outcome::Done : Outcome::EntryFailed;
}

bool Unzip::isExtractable(const Entry &entry)
{
    const qint16 method = entry.header.method;
    const auto index = static_cast<size_t>(m_index);
    if (index < m_overlaps.size() && m_overlaps[index])
        return error(u"Entry overlaps another"_s);
    if (entry.header.flags & zip::encryptedFlag)
        return error(u"Encryption not supported"_s);
    if (method >= zip::FirstReduced && method <= zip::LastReduced)
        return error(u"UnReduce not supported"_s);
    if (method != zip::Stored && method != zip::Deflated && method != zip::Deflated64)
        return error(u"Compression not supported"_s);
    if (entry.header.uncompressedSize > zip::largestContent(method, std::max(entry.header.compressedSize, 0)))
        return error(u"Size not supported"_s);
    return true;
}

bool Unzip::writeEntry(
    ArchiveFile &archive, qint64 position, const Entry &entry, QFile &file, const QString &path)
{
    const zip::Central &header = entry.header;
    const bool isDecoded = header.uncompressedSize <= 0 || decode(archive, position, entry, file, path);
    if (file.pos() < header.uncompressedSize && !file.resize(header.uncompressedSize))
        return isDecoded && roomError(path);
    if (!isDecoded)
        return false;

    // In UTC once: every use of a local time asks the system for the time zone again.
    const QDateTime modified = zip::fromDosTime(header.date, header.time).toUTC();
    if (modified.isValid()) {
        // Systems that keep no time of creation refuse the first one.
        file.setFileTime(modified, QFile::FileBirthTime);
        file.setFileTime(modified, QFile::FileModificationTime);
    }
    file.setFileTime(QDateTime::currentDateTimeUtc(), QFile::FileAccessTime);
    return true;
}

bool Unzip::decode(
    ArchiveFile &archive, qint64 position, const Entry &entry, QFile &file, const QString &path)
{
    const zip::Central &header = entry.header;
    const qint64 compressed = std::max(header.compressedSize, 0);
    if (header.method == zip::Stored) {
        const qint64 size = std::min<qint64>(compressed, header.uncompressedSize);
        for (qint64 done = 0; done < size;) {
            const qint64 part = std::min(size - done, storedPiece);
            const auto bytes = archive.view(position + done, part);
            if (!bytes)
                return mappingError(m_zipName);
            if (file.write(reinterpret_cast<const char *>(bytes->data()), part) != part)
                return roomError(path);
            done += part;
        }
        return size == header.uncompressedSize || error(inflateMessage(InflateOutcome::InputDepleted));
    }

    EntryInput input(archive, position, compressed);
    if (m_window.empty())
        m_window.resize(EntryOutput::windowSize);
    EntryOutput output(file, m_window);
    const auto result = m_inflater.run({.input = input,
        .inputSize = compressed,
        .output = output,
        .outputSize = header.uncompressedSize,
        .deflate64 = header.method == zip::Deflated64,
        .afterBlock = [&](qint64 used) {
            Q_EMIT UnzipProgress(m_index, static_cast<int>(used), static_cast<int>(compressed));
        }});
    switch (result.outcome) {
    case InflateOutcome::Done:
        return true;
    case InflateOutcome::ReadFailed:
        return mappingError(m_zipName);
    case InflateOutcome::WriteFailed:
        return roomError(path);
    default:
        return error(inflateMessage(result.outcome));
    }
}

} // namespace plum
