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
    const QString folder = QDir(folders.onDisk(folders.file({}))).canonicalPath();
    const QByteArray name
        = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().first(16);
    return u"%1/plum-%2.lock"_s.arg(
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation), QString::fromLatin1(name));
}

} // namespace

bool SingleInstance::claim()
{
    const QString own = m_folders.onDisk(m_folders.launcherClaim());
    QDir().mkpath(QFileInfo(own).path());
    FileClaim::Outcome outcome = m_claim.claim(own);
    if (outcome == FileClaim::Outcome::Impossible)
        outcome = m_claim.claim(claimOfUser(m_folders));
    // Where no claim can be made anywhere, starting is better than never starting.
    return outcome != FileClaim::Outcome::HeldByAnother;
}

} // namespace plum
