#include "ui/folder_removal.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace plum {

namespace {

// Entries can only be taken out of a folder that one may write to.
void makeFoldersWritable(const QString &folder)
{
    const QFile::Permissions owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QFile::setPermissions(folder, QFile::permissions(folder) | owner);
    QDirIterator below(folder, QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden | QDir::NoSymLinks);
    while (below.hasNext())
        makeFoldersWritable(below.next());
}

} // namespace

bool removeFolder(const QString &systemPath)
{
    const QFileInfo info(systemPath);
    if (info.isSymLink())
        return QFile::remove(systemPath);
    if (!info.exists())
        return true;
    makeFoldersWritable(systemPath);
    return QDir(systemPath).removeRecursively();
}

} // namespace plum
