#include "library/install_requests.h"

#include "library/app_folders.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QSaveFile>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView requestEnding(".request");
constexpr qint64 longestRequest = 1 << 16; // bytes

} // namespace

QString InstallRequests::folder() const
{
    return m_folders.onDisk(m_folders.installRequests());
}

bool InstallRequests::leave(const QString &path)
{
    if (!QDir().mkpath(folder()))
        return false;
    // The names sort by time.
    const QString name = u"%1-%2"_s.arg(QDateTime::currentMSecsSinceEpoch(), 15, 10, '0'_L1)
                             .arg(QCoreApplication::applicationPid());
    // Under its name a request is whole.
    QSaveFile file(folder() + u'/' + name + requestEnding);
    const QByteArray content = path.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
}

QStringList InstallRequests::take()
{
    QStringList paths;
    const QDir left(folder());
    for (const QString &name : left.entryList({u'*' + requestEnding}, QDir::Files, QDir::Name)) {
        QFile file(left.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString path = QString::fromUtf8(file.read(longestRequest));
        file.close();
        // One that stays would be asked about at every start.
        if (file.remove())
            paths += path;
    }
    return paths;
}

} // namespace plum
