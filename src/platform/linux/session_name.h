#pragma once

#include "platform/launcher_name.h"

#include <memory>

namespace plum {

// Offers the launcher on the session bus, as "Plum" of the project's domain: an object with Show(),
// Run(keyword) and Install(path). By the same name the bus starts an installed Plum. Null unless
// `programFolder` is the library that an installed Plum has, and where there is no bus. The name comes later;
// nothing waits for it.
std::unique_ptr<LauncherName> takeSessionName(const QString &programFolder, const LauncherWishes &wishes);

} // namespace plum
