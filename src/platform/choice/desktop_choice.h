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

// The backend, loaded from a library of its own, so that a process has nothing of the other one in it. It is
// looked for beside the executable and in the folders above that. Null when it is missing.
PlatformModule *backendFor(DesktopKind kind);

} // namespace plum
