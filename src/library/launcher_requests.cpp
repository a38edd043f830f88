#include "library/launcher_requests.h"

#include "library/app_folders.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QSaveFile>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 longestRequest = 1 << 16; // bytes

struct Ending
{
    LauncherRequest::Kind kind;
    QLatin1StringView text;
};

// Its file's ending says what a request is for.
constexpr std::array endings{
    Ending{LauncherRequest::Kind::Install, QLatin1StringView(".request")},
    Ending{LauncherRequest::Kind::OpenScript, QLatin1StringView(".script")},
    Ending{LauncherRequest::Kind::Run, QLatin1StringView(".run")},
    Ending{LauncherRequest::Kind::NewApp, QLatin1StringView(".new")},
    Ending{LauncherRequest::Kind::Store, QLatin1StringView(".store")},
    Ending{LauncherRequest::Kind::Stop, QLatin1StringView(".stop")},
};

} // namespace

QString LauncherRequests::folder() const
{
    return m_folders.onDisk(m_folders.launcherRequests());
}

std::optional<QString> LauncherRequests::leave(const LauncherRequest &request)
{
    if (!QDir().mkpath(folder()))
        return {};
    // The names sort by time.
    const QString name = u"%1-%2"_s.arg(QDateTime::currentMSecsSinceEpoch(), 15, 10, '0'_L1)
                             .arg(QCoreApplication::applicationPid());
    const QLatin1StringView ending = std::ranges::find(endings, request.kind, &Ending::kind)->text;
    // Under its name a request is whole.
    QSaveFile file(folder() + u'/' + name + ending);
    const QByteArray content = request.object.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        return {};
    return file.fileName();
}

QList<LauncherRequest> LauncherRequests::take()
{
    QList<LauncherRequest> requests;
    const QDir left(folder());
    for (const QString &name : left.entryList(QDir::Files, QDir::Name)) {
        const auto ending
            = std::ranges::find_if(endings, [&](const Ending &each) { return name.endsWith(each.text); });
        QFile file(left.filePath(name));
        if (ending == endings.end() || !file.open(QIODevice::ReadOnly))
            continue;
        const QString object = QString::fromUtf8(file.read(longestRequest));
        file.close();
        // One that stays would be carried out at every start.
        if (file.remove())
            requests += LauncherRequest{ending->kind, object};
    }
    return requests;
}

} // namespace plum
