#pragma once

#include <QUrl>

namespace plum {

// The store that this program was built for. The download base ends in "/plum/download/".
struct StoreAddresses
{
    QUrl site;
    QUrl downloadBase;

    // Those given to the build (PLUM_STORE_SITE, PLUM_DOWNLOAD_BASE).
    static StoreAddresses built();

    QUrl catalogue() const;
    // Sizes and checksums of all packages.
    QUrl index() const;
    QUrl package(const QString &name) const;
};

} // namespace plum
