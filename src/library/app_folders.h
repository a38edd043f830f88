#pragma once

#include "engine/script_folders.h"
#include "library/keyword_rules.h"

#include <QString>

#include <optional>

namespace plum {

class Paths;

// Where everything below `config\` lies, and which keywords can have a folder there. Paths are full ones with
// "\", folders without one at their end; `onDisk` makes them the system's.
class AppFolders final : public ScriptFolders
{
public:
    explicit AppFolders(const Paths &paths)
        : m_paths(paths)
    {
    }

    QString apps() const override;
    QString app(const QString &keyword) const override;
    QString appFile(const QString &keyword, const QString &name) const;
    QString appScript(const QString &keyword) const override;
    QString browserHelper() const override;
    QString downloadHelper() const override;
    QString downloads() const override;

    // What Plum keeps for itself: settings, the order of the apps, what packages brought.
    QString load() const;
    QString loadFile(const QString &name) const;
    QString listFile() const; // `config.txt`
    QString packageRecords() const;
    QString grantsFile() const; // what installed apps may do
    QString storeMemory() const; // what was believed of signed stores
    QString launcherClaim() const;
    QString launcherRequests() const;

    // Where apps are made before they take their place. The second one is for a library on another file
    // system, into which nothing can be moved; it is no app.
    QString unpacking() const;
    QString unpackingInApps() const;

    // The dialog component that can be registered.
    QString fixComponent() const;

    // A file of the program folder itself.
    QString file(const QString &name) const;

    QString onDisk(const QString &path) const;

    // An app's folder as the system opens it; nothing for a keyword that is no plain folder name.
    std::optional<QString> appOnDisk(const QString &keyword) const;

    // Whether a new app can have this keyword.
    KeywordFault fault(const QString &keyword) const;

    // Whether a folder of the library is an app. All are, but for that of `unpackingInApps`.
    static bool isApp(QStringView folderName);

private:
    const Paths &m_paths;
};

} // namespace plum
