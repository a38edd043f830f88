#include "archive/zip_format.h"

#include <QtEndian>

namespace plum::zip {

namespace {

template <class Integer> Integer at(Bytes bytes, size_t offset)
{
    return qFromLittleEndian<Integer>(bytes.subspan(offset, sizeof(Integer)).data());
}

constexpr qint32 inZip64Field = -1;

} // namespace

quint32 signature(Bytes header)
{
    return at<quint32>(header, 0);
}

End::End(Bytes header)
    : disk(at<quint16>(header, 4))
    , directoryDisk(at<quint16>(header, 6))
    , entries(at<quint16>(header, 8))
    , directoryOffset(at<quint32>(header, 16))
    , commentLength(at<quint16>(header, 20))
{
}

Local::Local(Bytes header)
    : signature(at<quint32>(header, 0))
    , compressedSize(at<qint32>(header, 18))
    , nameLength(at<quint16>(header, 26))
    , extraLength(at<quint16>(header, 28))
{
}

Central::Central(Bytes header)
    : signature(at<quint32>(header, 0))
    , madeBy(at<quint16>(header, 4))
    , needed(at<quint16>(header, 6))
    , flags(at<quint16>(header, 8))
    , method(at<qint16>(header, 10))
    , time(at<quint16>(header, 12))
    , date(at<quint16>(header, 14))
    , crc(at<quint32>(header, 16))
    , compressedSize(at<qint32>(header, 20))
    , uncompressedSize(at<qint32>(header, 24))
    , nameLength(at<quint16>(header, 28))
    , extraLength(at<quint16>(header, 30))
    , commentLength(at<quint16>(header, 32))
    , diskNumberStart(at<quint16>(header, 34))
    , internalAttributes(at<quint16>(header, 36))
    , externalAttributes(at<quint32>(header, 38))
    , localHeaderOffset(at<qint32>(header, 42))
{
}

bool Central::isZip64() const
{
    return compressedSize == inZip64Field || uncompressedSize == inZip64Field
        || localHeaderOffset == inZip64Field;
}

std::optional<qint64> zip64EndLength(Bytes header)
{
    constexpr qint64 smallest = 44; // bytes behind the field that says how many there are
    constexpr qint64 largest = 1 << 20;
    const auto behind = at<qint64>(header, 4);
    return behind >= smallest && behind <= largest ? std::optional(12 + behind) : std::nullopt;
}

qint64 largestContent(qint16 method, qint64 compressedSize)
{
    constexpr qint64 deflateRatio = 1032;
    constexpr qint64 deflate64Ratio = 29128;
    return (localSize + compressedSize) * (method == Deflated64 ? deflate64Ratio : deflateRatio);
}

QString versionText(quint16 version)
{
    return QString::number((version & 0xFF) / 10) + u'.' + QString::number(version % 10);
}

QDateTime fromDosTime(quint16 date, quint16 time)
{
    const QDate day(1980 + (date >> 9), date >> 5 & 0xF, date & 0x1F);
    const QTime clock(time >> 11, time >> 5 & 0x3F, (time & 0x1F) * 2);
    return day.isValid() && clock.isValid() ? QDateTime(day, clock) : QDateTime();
}

} // namespace plum::zip
