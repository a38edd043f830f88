#include "archive/app_archive.h"

#include "archive/zip_writer.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Every file has this time, the first that a ZIP archive can hold, so that times do not make other bytes.
const QDateTime &timeOfFiles()
{
    static const QDateTime time(QDate(1980, 1, 1), QTime(0, 0));
    return time;
}

// Why a file does not belong into a package; empty when it does.
QString reasonToLeaveOut(const QString &name, const QFileInfo &file)
{
    const QString own = name.section(u'/', -1);
    if (file.isSymLink())
        return u"a link"_s;
    if (name.split(u'/').first().startsWith(u'.') || name.contains("/."_L1))
        return u"hidden"_s;
    if (own.endsWith(".wfp"_L1, Qt::CaseInsensitive))
        return u"a package itself"_s;
    if (own.endsWith(u'~') || own.endsWith(".bak"_L1, Qt::CaseInsensitive))
        return u"an old copy"_s;
    if (own.compare("Thumbs.db"_L1, Qt::CaseInsensitive) == 0
        || own.compare("desktop.ini"_L1, Qt::CaseInsensitive) == 0)
        return u"a file of the system's"_s;
    return {};
}

QStringList namesBelow(const QDir &root)
{
    QStringList names;
    QDirIterator each(
        root.absolutePath(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (each.hasNext())
        names += root.relativeFilePath(each.next());
    names.sort();
    return names;
}

} // namespace

std::optional<AppArchive> archiveOf(const QString &folder, QString &problem)
{
    const QDir root(QDir(folder).absolutePath());
    AppArchive made;
    ZipWriter archive;
    for (const QString &name : namesBelow(root)) {
        QFile file(root.filePath(name));
        if (const QString reason = reasonToLeaveOut(name, QFileInfo(file)); !reason.isEmpty()) {
            made.leftOut += u"%1 (%2)"_s.arg(name, reason);
            continue;
        }
        if (!file.open(QIODevice::ReadOnly)) {
            problem = u"%1 cannot be read: %2"_s.arg(file.fileName(), file.errorString());
            return {};
        }
        archive.add(name, file.readAll(), timeOfFiles());
        made.files += name;
    }
    made.content = archive.finish();
    if (made.content.isEmpty()) {
        problem = u"%1 is too large for a package"_s.arg(folder);
        return {};
    }
    return made;
}

} // namespace plum
