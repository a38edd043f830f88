#include "waits/awaited_file.h"

#include <QDir>
#include <QFileInfo>

namespace plum {

namespace {

constexpr qint64 longestTrust = 1000; // milliseconds without a look at the disk

} // namespace

AwaitedFile::AwaitedFile(const QString &path, qint64 now)
    : m_path(QDir::cleanPath(QFileInfo(path).absoluteFilePath()))
    , m_lastLook(now)
{
    QObject::connect(
        &m_watcher, &QFileSystemWatcher::directoryChanged, &m_watcher, [this] { m_mayHaveCome = true; });
    watchNearestFolder();
}

bool AwaitedFile::isThere(qint64 now)
{
    if (!m_mayHaveCome && now - m_lastLook < longestTrust)
        return false;
    m_mayHaveCome = false;
    m_lastLook = now;
    // Before the look, or what comes in between is missed.
    watchNearestFolder();
    return QFileInfo::exists(m_path);
}

// The file's folder may have to come first; then the one above it tells.
void AwaitedFile::watchNearestFolder()
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
