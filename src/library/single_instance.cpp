#include "library/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A folder of the user's: the program folder itself may be read-only.
QString lockPath(const QString &programFolder)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    QDir().mkpath(folder);
    const QByteArray name
        = QCryptographicHash::hash(programFolder.toUtf8(), QCryptographicHash::Sha1).toHex().first(16);
    return u"%1/plum-%2.lock"_s.arg(folder, QString::fromLatin1(name));
}

} // namespace

SingleInstance::SingleInstance(const QString &programFolder)
    : m_lock(lockPath(programFolder))
{
    // A launcher may run for weeks; only the end of its process makes its claim stale.
    m_lock.setStaleLockTime(0);
}

bool SingleInstance::claim()
{
    return m_lock.tryLock(0) || m_lock.error() != QLockFile::LockFailedError;
}

std::optional<qint64> SingleInstance::holder() const
{
    qint64 process = 0;
    QString host;
    QString program;
    return m_lock.getLockInfo(&process, &host, &program) ? std::optional(process) : std::nullopt;
}

} // namespace plum
