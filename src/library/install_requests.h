#pragma once

#include <QString>
#include <QStringList>

namespace plum {

class AppFolders;

// Packages that somebody opened outside of the launcher: another process leaves their paths in a folder of
// the library, and the launcher takes them from there when it starts or is called.
class InstallRequests
{
public:
    explicit InstallRequests(const AppFolders &folders)
        : m_folders(folders)
    {
    }

    // Leaves a request for the package at `path` (a full path of the system). False when nothing can be
    // written.
    bool leave(const QString &path);

    // All requests that were left, the oldest first; nobody gets them a second time.
    QStringList take();

private:
    QString folder() const;

    const AppFolders &m_folders;
};

} // namespace plum
