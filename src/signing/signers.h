#pragma once

#include "signing/ed25519.h"
#include "store_index/role_files.h"
#include "store_index/signed_file.h"

#include <vector>

namespace plum {

// Whether enough of these keys have signed the file. Signatures of other keys do not count and do no harm.
bool isSignedFor(const SignedFile &file, const RoleKeys &role);

// The text with the signatures of all these keys, each once.
SignedFile signedBy(const QByteArray &content, const std::vector<SecretKey> &keys);

} // namespace plum
