#include "archive/zip_builder.h"

#include <QtEndian>

#include <zlib.h>

namespace plum::testing {

QByteArray littleEndian16(quint32 value)
{
    QByteArray bytes(2, '\0');
    qToLittleEndian(static_cast<quint16>(value), bytes.data());
    return bytes;
}

QByteArray littleEndian32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

namespace {

QByteArray compressed(QByteArray bytes, int level, int flush)
{
    z_stream stream{};
    deflateInit2(&stream, level, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    QByteArray result(static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(bytes.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef *>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, flush);
    result.resize(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    return result;
}

} // namespace

QByteArray deflated(const QByteArray &bytes, int level)
{
    return compressed(bytes, level, Z_FINISH);
}

QByteArray flushed(const QByteArray &bytes)
{
    return compressed(bytes, 6, Z_FULL_FLUSH);
}

namespace {

quint32 checksum(const QByteArray &content)
{
    return static_cast<quint32>(
        ::crc32(0, reinterpret_cast<const Bytef *>(content.constData()), static_cast<uInt>(content.size())));
}

} // namespace

BuiltEntry storedEntry(const QByteArray &name, const QByteArray &content)
{
    return {.name = name,
        .data = content,
        .uncompressedSize = static_cast<quint32>(content.size()),
        .crc = checksum(content)};
}

BuiltEntry deflatedEntry(const QByteArray &name, const QByteArray &content)
{
    return {.name = name,
        .data = deflated(content),
        .uncompressedSize = static_cast<quint32>(content.size()),
        .method = 8,
        .crc = checksum(content)};
}

namespace {

quint32 compressedSize(const BuiltEntry &entry)
{
    return static_cast<quint32>(entry.compressedSize < 0 ? entry.data.size() : entry.compressedSize);
}

QByteArray middle(const BuiltEntry &entry)
{
    return littleEndian16(entry.flags) + littleEndian16(entry.method) + littleEndian16(entry.time)
        + littleEndian16(entry.date) + littleEndian32(entry.crc) + littleEndian32(compressedSize(entry))
        + littleEndian32(entry.uncompressedSize);
}

QByteArray local(const BuiltEntry &entry)
{
    const QByteArray name = entry.localName.isEmpty() ? entry.name : entry.localName;
    QByteArray bytes = littleEndian32(entry.localSignature) + littleEndian16(entry.needed) + middle(entry)
        + littleEndian16(static_cast<quint32>(name.size()))
        + littleEndian16(static_cast<quint32>(entry.localExtra.size())) + name + entry.localExtra
        + entry.data;
    if (entry.hasDescriptor) {
        bytes += littleEndian32(0x08074B50) + littleEndian32(entry.crc)
            + littleEndian32(compressedSize(entry)) + littleEndian32(entry.uncompressedSize);
    }
    return bytes;
}

QByteArray central(const BuiltEntry &entry, qsizetype offset)
{
    return littleEndian32(entry.centralSignature) + littleEndian16(entry.madeBy)
        + littleEndian16(entry.needed) + middle(entry)
        + littleEndian16(static_cast<quint32>(entry.name.size()))
        + littleEndian16(static_cast<quint32>(entry.extra.size()))
        + littleEndian16(static_cast<quint32>(entry.comment.size())) + littleEndian16(0) + littleEndian16(1)
        + littleEndian32(entry.externalAttributes)
        + littleEndian32(static_cast<quint32>(entry.localOffset < 0 ? offset : entry.localOffset))
        + entry.name + entry.extra + entry.comment;
}

} // namespace

QByteArray buildArchive(const QList<BuiltEntry> &entries, const ArchiveEnd &end)
{
    QByteArray archive;
    QByteArray directory;
    for (const BuiltEntry &entry : entries) {
        directory += central(entry, archive.size());
        archive += local(entry);
    }
    const qint64 offset = end.directoryOffset < 0 ? archive.size() : end.directoryOffset;
    const auto count = static_cast<quint32>(end.entries < 0 ? entries.size() : end.entries);
    return archive + directory + end.beforeEnd + littleEndian32(0x06054B50) + littleEndian16(end.disk)
        + littleEndian16(end.disk) + littleEndian16(count) + littleEndian16(count)
        + littleEndian32(static_cast<quint32>(directory.size()))
        + littleEndian32(static_cast<quint32>(offset))
        + littleEndian16(static_cast<quint32>(end.comment.size())) + end.comment;
}

} // namespace plum::testing
