#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

namespace plum {

// Builds a ZIP archive in memory that every tool opens: entries deflated where that makes them smaller, names
// in UTF-8.
class ZipWriter
{
public:
    // `name` has "/" between folders. `modified` is kept in local time, to two seconds.
    void add(const QString &name, const QByteArray &content, const QDateTime &modified);

    // The archive. Empty when it, or a file in it, would be larger than the format holds without extensions
    // (4 GiB or 65,535 entries).
    QByteArray finish() const;

private:
    struct Entry
    {
        QByteArray name;
        quint32 checksum;
        qsizetype size;
        qsizetype packedSize; // as it stands in the archive
        quint16 method;
        quint32 time; // date in the upper, time in the lower half
        qsizetype offset; // of the local header
    };

    static void putCommon(QByteArray &to, const Entry &entry);

    std::vector<Entry> m_entries;
    QByteArray m_data;
};

// CRC-32 as ZIP uses it. `before` is that of the bytes in front of these.
quint32 crc32(QByteArrayView bytes, quint32 before = 0);

} // namespace plum
