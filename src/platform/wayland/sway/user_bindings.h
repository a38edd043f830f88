#pragma once

#include <QString>

namespace plum {

// Whether a configuration of sway's binds the keys that `combination` names ("Mod1+Shift+x"), whatever the
// order and the names in it. Files that the configuration includes are not looked at.
bool bindsKeys(const QString &configuration, const QString &combination);

} // namespace plum
