#include "store/store_addresses.h"

#include "store/protocol/package_link.h"

#include <QCryptographicHash>
#include <QRegularExpression>

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

bool StoreAddresses::isLocal() const
{
    static const QRegularExpression loopback(u"^(localhost|127(\\.\\d{1,3}){3}|::1)$"_s);
    return loopback.match(downloadBase.host()).hasMatch();
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
    return packageAt(name + packageEnding);
}

QUrl StoreAddresses::packageAt(const QString &path) const
{
    return below(downloadBase, path);
}

QString StoreAddresses::pathOf(const QUrl &package) const
{
    return package.path(QUrl::FullyDecoded).sliced(downloadBase.path(QUrl::FullyDecoded).size());
}

QString StoreAddresses::memoryName() const
{
    constexpr int enough = 16; // digits
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const PublicKey &key : rootKeys)
        hash.addData(key.toHex());
    return QString::fromLatin1(hash.result().toHex().first(enough));
}

} // namespace plum
