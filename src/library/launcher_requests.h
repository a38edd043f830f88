#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace plum {

class AppFolders;

// What somebody asks of the launcher from outside of it.
struct LauncherRequest
{
    enum class Kind {
        Install, // asks whether to install the package `object`, a full path of the system
        OpenScript, // asks whether to run or edit the script `object`, a full path of the system
        Run, // runs the app `object`
        NewApp,
        Store,
        Stop, // ends what runs
    };

    Kind kind = Kind::Install;
    QString object = {};

    bool operator==(const LauncherRequest &) const = default;
};

// Another process leaves such requests in a folder of the library, and the launcher takes them from there
// when it starts or is called.
class LauncherRequests
{
public:
    explicit LauncherRequests(const AppFolders &folders)
        : m_folders(folders)
    {
    }

    // The request's file, which takes it back when it is removed. Nothing when it cannot be written.
    std::optional<QString> leave(const LauncherRequest &request);

    // All requests that were left, the oldest first; nobody gets them a second time.
    QList<LauncherRequest> take();

private:
    QString folder() const;

    const AppFolders &m_folders;
};

} // namespace plum
