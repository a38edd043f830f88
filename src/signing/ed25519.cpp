#include "signing/ed25519.h"

#include <sodium.h>

#include <algorithm>

namespace plum {

namespace {

static_assert(SecretKey::length == crypto_sign_SEEDBYTES);
static_assert(PublicKey::length == crypto_sign_PUBLICKEYBYTES);

// Says whether the library can be used; asked before everything else.
bool isReady()
{
    static const bool ready = sodium_init() >= 0;
    return ready;
}

// Both halves of a key, for the time that something is signed.
struct KeyPair
{
    explicit KeyPair(const unsigned char *seed)
    {
        crypto_sign_seed_keypair(publicHalf.data(), secretHalf.data(), seed);
    }
    ~KeyPair() { sodium_memzero(secretHalf.data(), secretHalf.size()); }
    KeyPair(const KeyPair &) = delete;
    KeyPair &operator=(const KeyPair &) = delete;

    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicHalf{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretHalf{};
};

const unsigned char *bytesOf(const QByteArray &text)
{
    return reinterpret_cast<const unsigned char *>(text.constData());
}

} // namespace

std::optional<SecretKey> SecretKey::make()
{
    if (!isReady())
        return std::nullopt;
    SecretKey key;
    randombytes_buf(key.m_seed.data(), key.m_seed.size());
    return key;
}

std::optional<SecretKey> SecretKey::fromHex(const QByteArray &hex)
{
    const auto bytes = exactHex(hex, length);
    if (!bytes || !isReady())
        return std::nullopt;
    SecretKey key;
    std::copy(bytes->cbegin(), bytes->cend(), key.m_seed.begin());
    return key;
}

SecretKey::~SecretKey()
{
    sodium_memzero(m_seed.data(), m_seed.size());
}

QByteArray SecretKey::toHex() const
{
    return QByteArray(reinterpret_cast<const char *>(m_seed.data()), length).toHex();
}

PublicKey SecretKey::publicKey() const
{
    return {KeyPair(m_seed.data()).publicHalf};
}

QByteArray SecretKey::sign(const QByteArray &text) const
{
    const KeyPair pair(m_seed.data());
    QByteArray signature(crypto_sign_BYTES, Qt::Uninitialized);
    crypto_sign_detached(reinterpret_cast<unsigned char *>(signature.data()), nullptr, bytesOf(text),
        static_cast<unsigned long long>(text.size()), pair.secretHalf.data());
    return signature;
}

bool isSignedBy(const QByteArray &text, const QByteArray &signature, const PublicKey &key)
{
    return isReady() && signature.size() == static_cast<qsizetype>(crypto_sign_BYTES)
        && crypto_sign_verify_detached(bytesOf(signature), bytesOf(text),
               static_cast<unsigned long long>(text.size()), key.bytes.data())
        == 0;
}

} // namespace plum
