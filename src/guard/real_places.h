#pragma once

#include "library/app_folders.h"
#include "sheet/sheet.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace plum {

class Paths;
class Platform;

// Where the objects of a sheet are on this machine, links and ".." followed: what counts is the file that
// would be opened.
class RealPlaces
{
public:
    explicit RealPlaces(Platform &platform);

    // The path that the system would open, as far as it exists already; nothing where that cannot be said.
    static std::optional<QString> realPath(const QString &systemPath);

    // Whether `scope` allows the file at `systemPath` to the app of that keyword. `given`: the user named it.
    bool allows(Effect effect, const Scope &scope, const QString &keyword, const QString &systemPath,
        bool isGiven) const;

    // Whether `object` is this file.
    bool isSame(const QString &object, const QString &keyword, const QString &systemPath) const;

    // Two names of one file, existing or not; and whether a file lies in the folder itself.
    bool isSameFile(const QString &systemPath, const QString &other) const;
    bool isDirectlyIn(const QString &systemPath, const QString &folder) const;

private:
    QString place(const QString &object, const QString &keyword) const;
    bool isInside(const QString &path, const QString &folder) const;
    bool isApart(const QString &real, const QString &appFolder, bool isWritten) const;
    bool hasOddName(const QString &real) const;

    Platform &m_platform;
    AppFolders m_folders;
};

} // namespace plum
