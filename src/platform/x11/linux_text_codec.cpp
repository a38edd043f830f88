#include "platform/x11/linux_text_codec.h"

#include <QStringDecoder>

namespace plum {

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
    QStringDecoder gbk("GBK");
    return gbk(bytes);
}

QString LinuxTextCodec::fromUtf8(QByteArrayView bytes)
{
    return QString::fromUtf8(bytes);
}

} // namespace plum
