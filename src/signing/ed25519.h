#pragma once

#include "store_index/public_key.h"

#include <QByteArray>

#include <array>
#include <optional>

namespace plum {

// Signatures of Ed25519: one text and one key always give the same one.

// What a key is made from: whoever has it can sign. It is wiped from memory with the object.
class SecretKey
{
public:
    static constexpr int length = 32; // bytes

    // From the system's source of randomness; nothing when it has none.
    static std::optional<SecretKey> make();

    // Nothing for anything but 64 hexadecimal digits.
    static std::optional<SecretKey> fromHex(const QByteArray &hex);
    QByteArray toHex() const;

    ~SecretKey();
    SecretKey(const SecretKey &) = default;
    SecretKey &operator=(const SecretKey &) = default;

    PublicKey publicKey() const;
    QByteArray sign(const QByteArray &text) const;

private:
    SecretKey() = default;

    std::array<unsigned char, length> m_seed{};
};

bool isSignedBy(const QByteArray &text, const QByteArray &signature, const PublicKey &key);

} // namespace plum
