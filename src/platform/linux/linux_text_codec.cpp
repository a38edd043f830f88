#include "platform/linux/linux_text_codec.h"

#include <QStringDecoder>

#include <algorithm>

namespace plum {

namespace {

qsizetype asciiPrefix(QByteArrayView bytes)
{
    return std::ranges::find_if(bytes, [](char byte) { return (byte & 0x80) != 0; }) - bytes.begin();
}

} // namespace

QString LinuxTextCodec::fromSystem(QByteArrayView bytes)
{
    // Testing first holds one text in memory where decoding twice would hold two.
    if (bytes.isValidUtf8())
        return QString::fromUtf8(bytes);
    QStringDecoder gb18030("GB18030");
    return gb18030(bytes);
}

QByteArray LinuxTextCodec::toSystem(QStringView text)
{
    return text.toUtf8();
}

QString LinuxTextCodec::fromGb2312(QByteArrayView bytes)
{
    // The converter takes ten times as long over ASCII, which is all that many pages hold.
    const QByteArrayView ascii = bytes.first(asciiPrefix(bytes));
    if (ascii.size() == bytes.size())
        return QString::fromLatin1(bytes);
    QStringDecoder gbk("GBK");
    return QString::fromLatin1(ascii) + QString(gbk(bytes.sliced(ascii.size())));
}

QString LinuxTextCodec::fromUtf8(QByteArrayView bytes)
{
    return QString::fromUtf8(bytes);
}

} // namespace plum
