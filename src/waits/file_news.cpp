#include "waits/file_news.h"

#include <QDir>
#include <QFileInfo>

namespace plum {

FileNews::FileNews(const QString &path)
    : m_path(QDir::cleanPath(QFileInfo(path).absoluteFilePath()))
{
    QObject::connect(
        &m_watcher, &QFileSystemWatcher::directoryChanged, &m_watcher, [this] { m_hasArrived = true; });
}

bool FileNews::arrived()
{
    if (!m_hasArrived)
        return false;
    m_hasArrived = false;
    // Before whoever waits looks again, or what comes in between is missed.
    watchNearestFolder();
    return true;
}

// The file's folder may have to come first; then the one above it tells.
void FileNews::watchNearestFolder()
{
    QString folder = QFileInfo(m_path).path();
    while (!QFileInfo(folder).isDir() && QFileInfo(folder).path() != folder)
        folder = QFileInfo(folder).path();
    if (m_watcher.directories() == QStringList(folder))
        return;
    if (!m_watcher.directories().isEmpty())
        m_watcher.removePaths(m_watcher.directories());
    m_watcher.addPath(folder);
}

} // namespace plum
