#pragma once

#include <QByteArray>

#include <array>
#include <compare>
#include <optional>

namespace plum {

// A public key of Ed25519. It is its own name: files call it by its 64 hexadecimal digits.
struct PublicKey
{
    static constexpr int length = 32; // bytes

    std::array<unsigned char, length> bytes{};

    auto operator<=>(const PublicKey &) const = default;

    QByteArray toHex() const; // small letters

    // Nothing for anything but 64 hexadecimal digits.
    static std::optional<PublicKey> fromHex(const QByteArray &hex);
};

// The bytes of a text of hexadecimal digits, two a byte, in small letters alone: so there is one text for
// each value. Nothing when it is not one for exactly `length` bytes.
std::optional<QByteArray> exactHex(const QByteArray &hex, qsizetype length);

} // namespace plum
