#pragma once

#include <QByteArray>
#include <QString>

#include <iconv.h>

#include <optional>

namespace plum::test {

// The system's own converter, as a second opinion on encodings. Nothing when it does not accept the input.
inline std::optional<QByteArray> convertedByIconv(const char *from, const char *to, QByteArray bytes)
{
    const iconv_t converter = iconv_open(to, from);
    QByteArray result(bytes.size() * 4 + 16, Qt::Uninitialized);
    char *in = bytes.data();
    char *out = result.data();
    auto inLeft = static_cast<size_t>(bytes.size());
    auto outLeft = static_cast<size_t>(result.size());
    const bool converted = iconv(converter, &in, &inLeft, &out, &outLeft) == 0 && inLeft == 0;
    iconv_close(converter);
    if (!converted)
        return {};
    result.truncate(result.size() - static_cast<qsizetype>(outLeft));
    return result;
}

inline std::optional<QString> decodedByIconv(const char *encoding, const QByteArray &bytes)
{
    const auto utf16 = convertedByIconv(encoding, "UTF-16LE", bytes);
    if (!utf16)
        return {};
    return QString(reinterpret_cast<const QChar *>(utf16->constData()), utf16->size() / 2);
}

inline std::optional<QByteArray> encodedByIconv(const char *encoding, const QString &text)
{
    return convertedByIconv("UTF-8", encoding, text.toUtf8());
}

} // namespace plum::test
