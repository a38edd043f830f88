#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <span>

namespace plum {

// One entry of an archive's directory, as the archive has it.
struct ZipEntry
{
    QString madeBySystem; // a decimal number
    QString madeByVersion; // such as "3.8"
    QString neededSystem;
    QString neededVersion;
    quint16 flags = 0; // bit 0: encrypted
    qint16 method = 0;
    QDateTime modified; // local time; invalid when the archive has no date or an impossible one
    quint32 crc = 0; // not checked by anybody
    qint32 compressedSize = 0; // bytes; below 0 for sizes that this format cannot hold
    qint32 uncompressedSize = 0;
    quint16 diskNumberStart = 0;
    quint16 internalAttributes = 0;
    quint32 externalAttributes = 0;
    qint32 localHeaderOffset = 0; // from the start of the file
    QString fileName; // with "\" between its parts
    bool isFolder = false;
    QByteArray extra;
    QString comment;
};

// The structures of a ZIP file, little-endian, as far as they are used.
namespace zip {

using Bytes = std::span<const quint8>;

inline constexpr quint32 localSignature = 0x04034B50;
inline constexpr quint32 centralSignature = 0x02014B50;
inline constexpr quint32 endSignature = 0x06054B50;
inline constexpr quint32 descriptorSignature = 0x08074B50;
inline constexpr quint32 zip64LocatorSignature = 0x07064B50;
inline constexpr quint32 zip64EndSignature = 0x06064B50;

inline constexpr qint64 localSize = 30;
inline constexpr qint64 centralSize = 46;
inline constexpr qint64 endSize = 22;
inline constexpr qint64 descriptorSize = 16;
inline constexpr qint64 zip64LocatorSize = 20;

inline constexpr quint16 encryptedFlag = 1;

enum Method : qint16 { Stored = 0, FirstReduced = 2, LastReduced = 5, Deflated = 8, Deflated64 = 9 };

quint32 signature(Bytes header);

// End of the central directory.
struct End
{
    explicit End(Bytes header);

    quint16 disk;
    quint16 directoryDisk;
    quint16 entries; // on this disk
    quint32 directoryOffset;
    quint16 commentLength;

    bool isMultiDisk() const { return disk != 0 || directoryDisk != 0; }

    // Count or place stands in ZIP64's record instead, if there is one.
    bool isFull() const { return entries == 0xFFFF || directoryOffset == 0xFFFFFFFF; }
};

struct Local
{
    explicit Local(Bytes header);

    quint32 signature;
    qint32 compressedSize;
    quint16 nameLength;
    quint16 extraLength;

    qint64 size() const { return localSize + nameLength + extraLength; }
};

// A header of the central directory; the lengths of what follows it, and the fields of fixed size.
struct Central
{
    explicit Central(Bytes header);

    quint32 signature;
    quint16 madeBy;
    quint16 needed;
    quint16 flags;
    qint16 method;
    quint16 time;
    quint16 date;
    quint32 crc;
    qint32 compressedSize;
    qint32 uncompressedSize;
    quint16 nameLength;
    quint16 extraLength;
    quint16 commentLength;
    quint16 diskNumberStart;
    quint16 internalAttributes;
    quint32 externalAttributes;
    qint32 localHeaderOffset;

    qint64 tailSize() const { return qint64{nameLength} + extraLength + commentLength; }

    // Sizes or offset stand in a ZIP64 field instead, which this reader does not know.
    bool isZip64() const;
};

// How long ZIP64's end record is, from its beginning; nothing when it says nonsense.
std::optional<qint64> zip64EndLength(Bytes header);

// The most bytes that an entry of this method and compressed size can hold, its header counted in: DEFLATE
// gets 258 bytes out of two bits at best, Deflate64 65,538 out of 18.
qint64 largestContent(qint16 method, qint64 compressedSize);

// "3.8" from 0x031E: the minor digit comes from the whole value; kept, others show it so.
QString versionText(quint16 version);

// Local time from a DOS date and time; invalid when there is no such time.
QDateTime fromDosTime(quint16 date, quint16 time);

} // namespace zip
} // namespace plum
