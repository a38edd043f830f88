#include "archive/zip_writer.h"

#include "archive/deflate.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <limits>

namespace plum {

namespace {

constexpr quint32 localSignature = 0x04034B50;
constexpr quint32 centralSignature = 0x02014B50;
constexpr quint32 endSignature = 0x06054B50;
constexpr quint16 version = 20;
constexpr quint16 madeByUnix = 3 << 8 | version;
constexpr quint16 namesAreUtf8 = 1 << 11;
constexpr quint16 methodStored = 0;
constexpr quint16 methodDeflated = 8;
constexpr quint32 readableFile = 0100644U << 16; // a regular file, rw-r--r--

constexpr std::array<quint32, 256> crcTable = [] {
    std::array<quint32, 256> table{};
    for (quint32 i = 0; i < table.size(); ++i) {
        quint32 value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = value >> 1 ^ (value & 1 ? 0xEDB88320U : 0);
        table[i] = value;
    }
    return table;
}();

template <typename Number> void put(QByteArray &to, Number value)
{
    const Number bytes = qToLittleEndian(value);
    to.append(reinterpret_cast<const char *>(&bytes), sizeof bytes);
}

quint32 dosTime(const QDateTime &time)
{
    constexpr int firstYear = 1980;
    constexpr int lastYear = 2107;
    const QDate date = time.date();
    const int year = std::clamp(date.year(), firstYear, lastYear) - firstYear;
    const int day = year << 9 | date.month() << 5 | date.day();
    const int clock = time.time().hour() << 11 | time.time().minute() << 5 | time.time().second() / 2;
    return static_cast<quint32>(day) << 16 | static_cast<quint32>(clock);
}

} // namespace

quint32 crc32(QByteArrayView bytes, quint32 before)
{
    quint32 value = ~before;
    for (const char byte : bytes)
        value = value >> 8 ^ crcTable[(value ^ static_cast<quint8>(byte)) & 0xFF];
    return ~value;
}

// What local and central headers have in common, up to the name.
void ZipWriter::putCommon(QByteArray &to, const Entry &entry)
{
    put(to, namesAreUtf8);
    put(to, entry.method);
    put(to, entry.time);
    put(to, entry.checksum);
    put(to, static_cast<quint32>(entry.packedSize));
    put(to, static_cast<quint32>(entry.size));
    put(to, static_cast<quint16>(entry.name.size()));
    put(to, quint16{0}); // extra
}

void ZipWriter::add(const QString &name, const QByteArray &content, const QDateTime &modified)
{
    const QByteArray small = deflated(content);
    const bool isSmaller = small.size() < content.size();
    const QByteArray &data = isSmaller ? small : content;
    const Entry entry{.name = name.toUtf8(),
        .checksum = crc32(content),
        .size = content.size(),
        .packedSize = data.size(),
        .method = isSmaller ? methodDeflated : methodStored,
        .time = dosTime(modified.toLocalTime()),
        .offset = m_data.size()};
    put(m_data, localSignature);
    put(m_data, version);
    putCommon(m_data, entry);
    m_data += entry.name;
    m_data += data;
    m_entries.push_back(entry);
}

QByteArray ZipWriter::finish() const
{
    QByteArray directory;
    for (const Entry &entry : m_entries) {
        put(directory, centralSignature);
        put(directory, madeByUnix);
        put(directory, version);
        putCommon(directory, entry);
        put(directory, quint16{0}); // comment
        put(directory, quint16{0}); // disk
        put(directory, quint16{0}); // internal attributes
        put(directory, readableFile);
        put(directory, static_cast<quint32>(entry.offset));
        directory += entry.name;
    }
    constexpr qsizetype most = std::numeric_limits<quint32>::max();
    const bool isTooLarge = m_data.size() + directory.size() > most
        || std::ranges::any_of(m_entries, [](const Entry &entry) { return entry.size > most; });
    if (isTooLarge || m_entries.size() >= std::numeric_limits<quint16>::max())
        return {};

    QByteArray archive = m_data + directory;
    put(archive, endSignature);
    put(archive, quint16{0}); // this disk
    put(archive, quint16{0}); // the directory's disk
    put(archive, static_cast<quint16>(m_entries.size()));
    put(archive, static_cast<quint16>(m_entries.size()));
    put(archive, static_cast<quint32>(directory.size()));
    put(archive, static_cast<quint32>(m_data.size()));
    put(archive, quint16{0}); // comment
    return archive;
}

} // namespace plum
