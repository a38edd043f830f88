#include "store/downloaded_package.h"

#include "library/package_index.h"
#include "store/protocol/package_link.h"

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

bool DownloadedPackage::isGenuine(const QString &name, const QByteArray &sha256) const
{
    return fileChecksum(m_folders.onDisk(path(name))) == sha256;
}

void DownloadedPackage::deleteAll(const QString &name) const
{
    for (const QLatin1StringView ending : leftoverEndings)
        QFile::remove(m_folders.onDisk(path(name) + ending));
}

} // namespace plum
