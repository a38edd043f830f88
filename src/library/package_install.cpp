#include "library/package_install.h"

#include "library/package_index.h"
#include "platform/paths.h"

#include <QDir>
#include <QFileInfo>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView packageEnding(".wfp");

constexpr QLatin1StringView leftoverEndings[]
    = {QLatin1StringView(), QLatin1StringView(".dl"), QLatin1StringView(".dl.cfg")};

QString packageFile(const Paths &paths, const QString &name)
{
    return paths.programFolder() + u'\\' + name + packageEnding;
}

} // namespace

QString PackageInstall::appFolder(const QString &name) const
{
    return m_folders.app(name);
}

bool PackageInstall::appExists(const QString &name) const
{
    return QFileInfo(m_paths.toSystem(appFolder(name))).isDir();
}

bool PackageInstall::isGenuine(const QString &name, const QByteArray &sha256) const
{
    return fileChecksum(m_paths.toSystem(packageFile(m_paths, name))) == sha256;
}

bool PackageInstall::unpack(const QString &name)
{
    m_oZip = std::make_unique<Unzip>(m_paths, m_codec);
    m_oZip->Init(packageFile(m_paths, name));

    const QString target = appFolder(name);
    if (appExists(name)) {
        m_oZip->unzip(target);
        return !m_oZip->ranOutOfRoom();
    }
    const QString unpacking = m_folders.unpacking();
    const QString unpacked = unpacking + u'\\' + name;
    QDir(m_paths.toSystem(unpacked)).removeRecursively();
    m_oZip->unzip(unpacked);
    // Apps may be kept on another disk, to which nothing can be moved at once.
    if (!m_oZip->ranOutOfRoom() && !moveIntoPlace(unpacked, target)) {
        m_oZip->unzip(target);
        if (m_oZip->ranOutOfRoom())
            QDir(m_paths.toSystem(target)).removeRecursively();
    }
    QDir(m_paths.toSystem(unpacking)).removeRecursively();
    return !m_oZip->ranOutOfRoom();
}

bool PackageInstall::moveIntoPlace(const QString &from, const QString &to) const
{
    if (!QFileInfo(m_paths.toSystem(from)).isDir())
        return true; // nothing came out of the package
    QDir().mkpath(m_paths.toSystem(m_folders.apps()));
    return QDir().rename(m_paths.toSystem(from), m_paths.toSystem(to));
}

void PackageInstall::deletePackage(const QString &name) const
{
    for (const QLatin1StringView ending : leftoverEndings)
        QFile::remove(m_paths.toSystem(packageFile(m_paths, name) + ending));
}

} // namespace plum
