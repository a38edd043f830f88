#include "engine/edition2/script_text.h"

#include <QList>
#include <QStringDecoder>

namespace plum::edition2 {

namespace {

bool isUtf8(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !decoder.hasError();
}

int firstBadLine(const QByteArray &bytes)
{
    int number = 1;
    for (const QByteArray &line : bytes.split('\n')) {
        if (!isUtf8(line))
            return number;
        ++number;
    }
    return number;
}

} // namespace

Decoded decode(const QByteArray &bytes)
{
    Decoded decoded{QString::fromUtf8(bytes), isUtf8(bytes) ? 0 : firstBadLine(bytes)};
    if (decoded.text.startsWith(QChar::ByteOrderMark))
        decoded.text.remove(0, 1);
    return decoded;
}

} // namespace plum::edition2
