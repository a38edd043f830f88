#pragma once

#include "platform/desktop_windows.h"

#include <QStringList>

#include <optional>
#include <sys/types.h>
#include <vector>

namespace plum {

class SwaySocket;

// What Plum has written on a window that it took off the screen: sway has one place for such windows and no
// word for the difference. It stands in a mark of the window, so that every process reads it, and goes with
// the window.
struct PutAway
{
    enum class Manner {
        Hidden,
        Minimised,
    };
    enum class Before {
        Floating, // sway itself keeps the rectangle of such a window
        Tiled,
        Fullscreen,
    };

    Manner manner = Manner::Hidden;
    Before before = Before::Floating;
    QRect rectangle; // with the frame, as it was

    // Null when `mark` is none of these.
    static std::optional<PutAway> fromMark(const QString &mark);
    QString mark(WindowHandle window) const;
};

// A window in sway's tree.
struct SwayWindow
{
    WindowHandle handle = 0;
    QString title;
    pid_t process = 0;
    QRect frame;
    bool isDrawn = false; // the program has drawn the window in the size that sway wants
    bool isFocused = false;
    bool isFloating = false;
    bool isFullscreen = false;
    bool isInScratchpad = false;
    bool isOnCurrentWorkspace = false; // of its output
    bool isVisible = false; // not covered by a tab or by a full screen
    std::optional<PutAway> putAway;
    QStringList marks;

    // Where the window is, or was when it was put away.
    QRect rectangle() const;
    bool isHidden() const { return putAway && putAway->manner == PutAway::Manner::Hidden; }
    bool isMinimised() const { return isInScratchpad && !isHidden(); }
};

// All windows, the one above all others first.
std::vector<SwayWindow> readSwayTree(SwaySocket &socket);

} // namespace plum
