#include "platform/x11/linux_text_codec.h"

#include <QStringDecoder>

namespace plum {

QString LinuxTextCodec::fromSystem(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
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
