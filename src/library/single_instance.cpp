#include "library/single_instance.h"

#include "library/app_folders.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// For a program folder that cannot be written: nobody writes its lists either, so each user may have a
// launcher.
QString claimOfUser(const AppFolders &folders)
{
    const QString called = folders.onDisk(folders.file({}));
    const QString resolved = QDir(called).canonicalPath();
    // Where the user may not look at every folder above it, the path is all that is known.
    const QString folder = resolved.isEmpty() ? called : resolved;
    const QByteArray name
        = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().first(16);
    return u"%1/plum-%2.lock"_s.arg(
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation), QString::fromLatin1(name));
}

} // namespace

bool SingleInstance::claim()
{
    m_file = m_folders.onDisk(m_folders.launcherClaim());
    QDir().mkpath(QFileInfo(m_file).path());
    FileClaim::Outcome outcome = m_claim.claim(m_file);
    if (outcome == FileClaim::Outcome::Impossible) {
        m_file = claimOfUser(m_folders);
        outcome = m_claim.claim(m_file);
    }
    // Where no claim can be made anywhere, starting is better than never starting.
    return outcome != FileClaim::Outcome::HeldByAnother;
}

std::optional<qint64> SingleInstance::running() const
{
    const std::optional<qint64> ofAll = FileClaim::holder(m_folders.onDisk(m_folders.launcherClaim()));
    return ofAll ? ofAll : FileClaim::holder(claimOfUser(m_folders));
}

std::optional<qint64> SingleInstance::holder() const
{
    return FileClaim::holder(m_file);
}

} // namespace plum
