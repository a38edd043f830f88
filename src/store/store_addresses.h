#pragma once

#include "store_index/public_key.h"

#include <QUrl>

#include <vector>

namespace plum {

// The store that this program was built for. The download base ends in "/plum/download/".
struct StoreAddresses
{
    QUrl site;
    QUrl downloadBase;
    std::vector<PublicKey> rootKeys
        = {}; // all of them vouch for the store's own keys; none: nothing is signed

    // Those given to the build (PLUM_STORE_SITE, PLUM_DOWNLOAD_BASE, PLUM_STORE_ROOT_KEYS).
    static StoreAddresses built();

    bool isSigned() const { return !rootKeys.empty(); }

    // Whether the packages come from this computer.
    bool isLocal() const;

    QUrl catalogue() const;
    // Sizes and checksums of all packages.
    QUrl index() const;
    QUrl package(const QString &name) const;
    QUrl packageAt(const QString &path) const;
    // Where a package lies below the base, as the index names it.
    QString pathOf(const QUrl &package) const;

    // A name of its own for what is remembered of this store: of another key's nothing is believed.
    QString memoryName() const;
};

} // namespace plum
