#pragma once

#include <QStringView>

namespace plum {

// Names that Windows takes for devices, such as "nul" or "com1.txt", in any letter case.
bool isDeviceName(QStringView name);

// Whether this system takes them for devices. Elsewhere they are names like all others.
#ifdef Q_OS_WIN
inline constexpr bool systemHasDeviceNames = true;
#else
inline constexpr bool systemHasDeviceNames = false;
#endif

} // namespace plum
