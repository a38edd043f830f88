// In the program for the tests of a signed store: the same addresses, vouched for by the test's own keys.
#include "store/store_addresses.h"

namespace plum {

StoreAddresses StoreAddresses::built()
{
    StoreAddresses addresses{QUrl(QStringLiteral(PLUM_STORE_SITE)), QUrl(QStringLiteral(PLUM_DOWNLOAD_BASE))};
    if (const auto key = PublicKey::fromHex(qgetenv("PLUM_TEST_ROOT_KEY")))
        addresses.rootKeys.push_back(*key);
    return addresses;
}

} // namespace plum
