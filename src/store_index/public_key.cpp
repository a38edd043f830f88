#include "store_index/public_key.h"

#include <algorithm>

namespace plum {

std::optional<QByteArray> exactHex(const QByteArray &hex, qsizetype length)
{
    if (hex.size() != 2 * length)
        return std::nullopt;
    QByteArray bytes = QByteArray::fromHex(hex);
    if (bytes.size() != length || bytes.toHex() != hex)
        return std::nullopt;
    return bytes;
}

QByteArray PublicKey::toHex() const
{
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), length).toHex();
}

std::optional<PublicKey> PublicKey::fromHex(const QByteArray &hex)
{
    const std::optional<QByteArray> decoded = exactHex(hex, length);
    if (!decoded)
        return std::nullopt;
    PublicKey key;
    std::copy(decoded->cbegin(), decoded->cend(), key.bytes.begin());
    return key;
}

} // namespace plum
