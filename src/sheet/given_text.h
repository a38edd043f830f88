#pragma once

#include <QStringList>

namespace plum {

// What the user gave is that as a whole. Of what was typed behind the keyword, what stands between the signs
// of a list was given, too; a script that cuts it anywhere else makes something of its own of it: cut at "/",
// a path would give away the folders above it.

// Whether people put `separator` between the parts of a list.
bool separatesLists(const QString &separator);

// `typed`, and its parts.
QStringList partsOfTyped(const QString &typed);

} // namespace plum
