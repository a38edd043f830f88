#pragma once

#include <QByteArray>
#include <QList>

namespace plum::testing {

QByteArray littleEndian16(quint32 value);
QByteArray littleEndian32(quint32 value);

// `bytes` as a raw DEFLATE stream.
QByteArray deflated(const QByteArray &bytes, int level = 6);

// The same as blocks of which none is the last, ending on a byte boundary.
QByteArray flushed(const QByteArray &bytes);

// One entry to be built. What is left alone is right; set a field to make it lie.
struct BuiltEntry
{
    QByteArray name;
    QByteArray data; // as it stands in the archive
    quint32 uncompressedSize = 0;
    quint16 method = 0;
    quint16 flags = 0;
    quint16 madeBy = 0x031E;
    quint16 needed = 20;
    quint16 time = 12 << 11 | 34 << 5 | 28; // 12:34:56
    quint16 date = (2021 - 1980) << 9 | 3 << 5 | 14; // 2021-03-14
    quint32 crc = 0;
    QByteArray extra = {};
    QByteArray localExtra = {};
    QByteArray comment = {};
    quint32 externalAttributes = 0;
    quint32 localSignature = 0x04034B50;
    quint32 centralSignature = 0x02014B50;
    qint64 compressedSize = -1; // -1: that of the data
    qint64 localOffset = -1; // -1: where it is
    bool hasDescriptor = false;
    QByteArray localName = {}; // empty: the name
};

BuiltEntry storedEntry(const QByteArray &name, const QByteArray &content);
BuiltEntry deflatedEntry(const QByteArray &name, const QByteArray &content);

struct ArchiveEnd
{
    QByteArray comment = {};
    quint16 disk = 0;
    int entries = -1; // -1: as many as there are
    qint64 directoryOffset = -1;
    QByteArray beforeEnd = {}; // what stands between directory and end record
};

QByteArray buildArchive(const QList<BuiltEntry> &entries, const ArchiveEnd &end = {});

} // namespace plum::testing
