#pragma once

#include <QFileSystemWatcher>
#include <QString>

namespace plum {

// A file that may not be there yet. The system tells when its folder changes, so that looking again and again
// costs nothing; once a second the disk is looked at all the same, since not every file system tells.
class AwaitedFile
{
public:
    // `path` as the system writes it. `now` counts milliseconds.
    AwaitedFile(const QString &path, qint64 now);

    bool isThere(qint64 now);

private:
    void watchNearestFolder();

    QString m_path;
    QFileSystemWatcher m_watcher;
    bool m_mayHaveCome = true;
    qint64 m_lastLook;
};

} // namespace plum
