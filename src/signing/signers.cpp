#include "signing/signers.h"

#include <algorithm>

namespace plum {

bool isSignedFor(const SignedFile &file, const RoleKeys &role)
{
    return std::ranges::count_if(file.signatures, [&](const SignedFile::Signature &each) {
        return role.keys.contains(each.key) && isSignedBy(file.content, each.bytes, each.key);
    }) >= role.threshold;
}

SignedFile signedBy(const QByteArray &content, const std::vector<SecretKey> &keys)
{
    SignedFile file{.signatures = {}, .content = content};
    for (const SecretKey &key : keys) {
        const PublicKey publicKey = key.publicKey();
        if (std::ranges::count(file.signatures, publicKey, &SignedFile::Signature::key) == 0)
            file.signatures.push_back({publicKey, key.sign(content)});
    }
    return file;
}

} // namespace plum
