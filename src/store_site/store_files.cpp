#include "store_files.h"

#include "store_site.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace plum {

using namespace Qt::StringLiterals;

bool writeFile(const QString &path, const QByteArray &content, QString &problem)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush()
        && file.commit())
        return true;
    problem = u"%1: %2"_s.arg(path, file.errorString());
    return false;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString downloadsOf(const QString &store)
{
    return store + u'/' + downloadFolder;
}

std::optional<StoreIndex> indexOf(const QString &store)
{
    return StoreIndex::parse(readFile(downloadsOf(store) + unsignedIndexFile));
}

QDateTime momentOfFiles()
{
    bool isSet = false;
    const qint64 seconds = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isSet);
    return isSet ? QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC) : QDateTime::currentDateTimeUtc();
}

} // namespace plum
