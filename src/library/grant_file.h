#pragma once

#include "library/app_folders.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

namespace plum {

// What an installed app was granted when it was installed. An app that has no grant is the user's own.
struct Grant
{
    QByteArray contentHash = {}; // of the scripts that it was granted to; others do not run under it
    QByteArray sheet = {}; // JSON
    bool isTakenBack = false; // by the user, or because the file was damaged
};

// `config\load\grants.json`: the grants of all installed apps, by keyword. It is read anew each time, and
// written whole. A file that cannot be understood takes back the grants of all apps that came as packages:
// what is not known is not allowed.
class GrantFile
{
public:
    explicit GrantFile(const Paths &paths)
        : m_folders(paths)
        , m_paths(paths)
    {
    }

    std::optional<Grant> of(const QString &keyword) const;

    // False when the file cannot be written.
    bool set(const QString &keyword, const Grant &grant) const;

    // The app becomes the user's own, or is gone.
    bool remove(const QString &keyword) const;

private:
    using Grants = QMap<QString, Grant>;

    Grants read() const;
    Grants allTakenBack() const;
    bool write(const Grants &grants) const;
    QString keyOf(const QString &keyword) const;

    AppFolders m_folders;
    const Paths &m_paths;
};

} // namespace plum
