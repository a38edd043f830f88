#pragma once

#include <QString>

namespace plum {

class PlatformModule;

// The ways to a desktop that there is a backend for.
enum class DesktopKind {
    X11,
    Wayland,
};

// What PLUM_PLATFORM says, `x11` or `wayland`. Otherwise Wayland in a session of a compositor that offers
// what the backend needs, unless Qt was told to go to an X server; else X11.
DesktopKind chosenDesktop();

// The backend's library, which is looked for beside the executable and in the folders above that. Empty when
// it is missing.
QString backendFile(DesktopKind kind);

// The backend, loaded from that library, so that a process has nothing of the other one in it. Null when it
// is missing.
PlatformModule *backendFor(DesktopKind kind);

} // namespace plum
