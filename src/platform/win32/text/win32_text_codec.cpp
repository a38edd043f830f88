#include "platform/win32/text/win32_text_codec.h"

#include "platform/win32/text/code_page.h"

#include <qt_windows.h>

namespace plum {

namespace {

constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");
constexpr unsigned gbk = 936;

} // namespace

QString Win32TextCodec::fromSystem(QByteArrayView bytes)
{
    if (bytes.startsWith(utf8Mark))
        return QString::fromUtf8(bytes);
    return fromCodePage(GetACP(), bytes);
}

QByteArray Win32TextCodec::toSystem(QStringView text)
{
    return toCodePage(GetACP(), text);
}

QString Win32TextCodec::fromGb2312(QByteArrayView bytes)
{
    return fromCodePage(gbk, bytes);
}

QString Win32TextCodec::fromUtf8(QByteArrayView bytes)
{
    return QString::fromUtf8(bytes);
}

} // namespace plum
