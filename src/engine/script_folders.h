#pragma once

#include <QString>

namespace plum {

// Where the apps and the helper programs of this program folder are, as far as scripts and their runs need
// it. Paths are full ones with "\" unless they say otherwise, and folders have no "\" at their end.
class ScriptFolders
{
public:
    virtual ~ScriptFolders() = default;

    // The library: the folder of all apps.
    virtual QString apps() const = 0;

    // The folder of one app.
    virtual QString app(const QString &keyword) const = 0;

    // The script of an app, relative to the program folder.
    virtual QString appScript(const QString &keyword) const = 0;

    virtual QString browserHelper() const = 0;
    virtual QString downloadHelper() const = 0;

    // Where downloads go for which a script names no folder.
    virtual QString downloads() const = 0;
};

} // namespace plum
