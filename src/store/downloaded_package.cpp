#include "store/downloaded_package.h"

#include "store/protocol/package_link.h"
#include "store_index/store_index.h"

#include <QCryptographicHash>
#include <QFile>

namespace plum {

namespace {

constexpr QLatin1StringView leftoverEndings[]
    = {QLatin1StringView(), QLatin1StringView(".dl"), QLatin1StringView(".dl.cfg")};

} // namespace

QString DownloadedPackage::path(const QString &name) const
{
    return m_folders.file(name + packageEnding);
}

IndexFault DownloadedPackage::faultOf(const QString &name, const IndexedPackage &named) const
{
    QFile file(m_folders.onDisk(path(name)));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly))
        return IndexFault::WrongChecksum;
    if (file.size() != named.size)
        return IndexFault::WrongSize;
    return hash.addData(&file) && hash.result() == named.checksum ? IndexFault::None
                                                                  : IndexFault::WrongChecksum;
}

void DownloadedPackage::deleteAll(const QString &name) const
{
    for (const QLatin1StringView ending : leftoverEndings)
        QFile::remove(m_folders.onDisk(path(name) + ending));
}

} // namespace plum
