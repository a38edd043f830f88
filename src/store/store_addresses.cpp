#include "store/store_addresses.h"

#include "store/protocol/package_link.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QUrl below(const QUrl &base, const QString &fileName)
{
    QUrl address(base);
    address.setPath(base.path(QUrl::FullyDecoded) + fileName, QUrl::DecodedMode);
    return address;
}

} // namespace

StoreAddresses StoreAddresses::built()
{
    return {QUrl(QStringLiteral(PLUM_STORE_SITE)), QUrl(QStringLiteral(PLUM_DOWNLOAD_BASE))};
}

QUrl StoreAddresses::catalogue() const
{
    QUrl address = below(site, u"/plum/workflow_in/index.html"_s);
    address.setQuery(u"v=0.01"_s);
    return address;
}

QUrl StoreAddresses::index() const
{
    return below(downloadBase, u"index.json"_s);
}

QUrl StoreAddresses::package(const QString &name) const
{
    return below(downloadBase, name + packageEnding);
}

} // namespace plum
