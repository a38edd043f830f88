#pragma once

#include <QString>

namespace plum {

// Deletes the folder at `systemPath` with all its content, read-only files too. What symbolic links in it, or
// the path itself, point to stays. Returns whether the folder is gone; one that was never there is.
bool removeFolder(const QString &systemPath);

} // namespace plum
