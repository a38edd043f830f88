#pragma once

#include "store_index/public_key.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace plum {

// A text and the signatures that were made for it. What is signed are the bytes below the empty line as they
// stand, so nothing has to be written anew to be verified:
//
//   plum-signed 1
//   <public key, 64 hexadecimal digits> <signature, 128 hexadecimal digits>
//   ...
//   <empty line>
//   <the text, to the end of the file>
struct SignedFile
{
    static constexpr int signatureLength = 64; // bytes
    static constexpr int mostSignatures = 32;

    struct Signature
    {
        PublicKey key;
        QByteArray bytes;
    };

    std::vector<Signature> signatures; // one a key
    QByteArray content;

    QByteArray toBytes() const;

    // Nothing when it is no such file, or two signatures are of one key.
    static std::optional<SignedFile> parse(const QByteArray &file);

    // Whether the file says of itself that it is one. A web server that shows a page for what it does not
    // have sends something else.
    static bool claimsToBeOne(const QByteArray &file);
};

} // namespace plum
