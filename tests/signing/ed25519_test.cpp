#include "signing/signers.h"

#include <gtest/gtest.h>

using namespace plum;

namespace {

struct Vector
{
    const char *secret;
    const char *publicKey;
    const char *text;
    const char *signature;
};

// The first three of RFC 8032, section 7.1.
const Vector vectors[]{
    {"9d61b19deffd5a60ba844af492ec2cc44449c5697b326919703bac031cae7f60",
        "d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a", "",
        "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e39701cf9b46bd25b"
        "f5f0595bbe"
        "24655141438e7a100b"},
    {"4ccd089b28ff96da9db6c346ec114e0f5b8a319f35aba624da8cf6ed4fb8a6fb",
        "3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c", "72",
        "92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da085ac1e43e15996e458f3613d0f11d8c387b"
        "2eaeb4302a"
        "eeb00d291612bb0c00"},
    {"c5aa8df43f9f837bedb7442f31dcb7b166d38535076f094b85ce3a2e0b4458f7",
        "fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025", "af82",
        "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac18ff9b538d16f290ae67f760984dc6594a7c"
        "15e9716ed2"
        "8dc027beceea1ec40a"},
};

} // namespace

TEST(Ed25519, SignsAsTheStandardSays)
{
    for (const Vector &each : vectors) {
        const auto secret = SecretKey::fromHex(each.secret);
        ASSERT_TRUE(secret);
        const QByteArray text = QByteArray::fromHex(each.text);
        EXPECT_EQ(secret->publicKey().toHex(), each.publicKey);
        EXPECT_EQ(secret->sign(text).toHex(), each.signature);
        EXPECT_TRUE(isSignedBy(text, QByteArray::fromHex(each.signature), secret->publicKey()));
    }
}

TEST(Ed25519, AChangedBitAnywhereIsNoticed)
{
    const SecretKey key = SecretKey::make().value();
    const QByteArray text = "what the store has";
    const QByteArray signature = key.sign(text);
    for (int bit = 0; bit < signature.size() * 8; ++bit) {
        QByteArray changed = signature;
        changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ (1 << bit % 8));
        EXPECT_FALSE(isSignedBy(text, changed, key.publicKey())) << bit;
    }
    for (int bit = 0; bit < text.size() * 8; ++bit) {
        QByteArray changed = text;
        changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ (1 << bit % 8));
        EXPECT_FALSE(isSignedBy(changed, signature, key.publicKey())) << bit;
    }
    EXPECT_FALSE(isSignedBy(text, signature.first(63), key.publicKey()));
    EXPECT_FALSE(isSignedBy(text, signature, SecretKey::make()->publicKey()));
}

TEST(Ed25519, AKeyIsReadAsItIsWritten)
{
    const SecretKey key = SecretKey::make().value();
    EXPECT_EQ(SecretKey::fromHex(key.toHex())->publicKey(), key.publicKey());
    for (const QByteArray &wrong :
        {QByteArray(), key.toHex().chopped(1), key.toHex() + "0", QByteArray(64, 'x')})
        EXPECT_FALSE(SecretKey::fromHex(wrong)) << wrong.constData();
}

TEST(Signers, CountEachKeyOfTheRoleOnce)
{
    const SecretKey first = SecretKey::make().value();
    const SecretKey second = SecretKey::make().value();
    const SecretKey stranger = SecretKey::make().value();
    const RoleKeys two{{first.publicKey(), second.publicKey()}, 2};
    EXPECT_TRUE(isSignedFor(signedBy("text", {first, second}), two));
    EXPECT_TRUE(isSignedFor(signedBy("text", {stranger, second, first}), two));
    EXPECT_FALSE(isSignedFor(signedBy("text", {first, stranger}), two));
    EXPECT_FALSE(isSignedFor(signedBy("text", {first, first}), two));
}
