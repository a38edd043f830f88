#include "platform/linux/file_paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Symbolic links are not followed, so that a link gives its folder a library of its own.
QString folderOf(const QString &programPath)
{
    QString path = programPath;
    if (!path.contains(u'/'))
        path = QStandardPaths::findExecutable(path);
    // Whoever starts a program may call it by any name; the system knows the file.
    if (path.isEmpty())
        path = QFile::symLinkTarget(u"/proc/self/exe"_s);
    return QDir::cleanPath(QFileInfo(QDir::current().absoluteFilePath(path)).path());
}

bool exists(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

// The name in `folder` that differs from `name` in letter case alone; `name` itself when there is none.
QString nameOnDisk(const QString &folder, const QString &name)
{
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString &entry : QDir(folder.isEmpty() ? u"."_s : folder).entryList(everything, QDir::Name)) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return name;
}

} // namespace

FilePaths::FilePaths(const QString &programPath)
    : m_programFolder(folderOf(programPath))
{
}

QString FilePaths::toSystem(const QString &path) const
{
    const QString written = QString(path).replace(u'\\', u'/');
    if (written.isEmpty() || exists(written))
        return written;

    QString found = written.startsWith(u'/') ? u"/"_s : QString();
    for (const QString &name : written.split(u'/', Qt::SkipEmptyParts)) {
        if (!found.isEmpty() && !found.endsWith(u'/'))
            found += u'/';
        found += exists(found + name) ? name : nameOnDisk(found, name);
    }
    return written.endsWith(u'/') && !found.endsWith(u'/') ? found + u'/' : found;
}

} // namespace plum
