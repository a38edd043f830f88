// What the build was given, in a file of its own: a test links the program's objects with another one, whose
// keys it holds.
#include "store/store_addresses.h"

namespace plum {

StoreAddresses StoreAddresses::built()
{
    StoreAddresses addresses{QUrl(QStringLiteral(PLUM_STORE_SITE)), QUrl(QStringLiteral(PLUM_DOWNLOAD_BASE))};
    for (const QByteArray &hex : QByteArray(PLUM_STORE_ROOT_KEYS).split(',')) {
        if (const auto key = PublicKey::fromHex(hex))
            addresses.rootKeys.push_back(*key);
    }
    return addresses;
}

} // namespace plum
