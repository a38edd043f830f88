#pragma once

#include <QRect>

#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace plum {

class WindowFacts;
class X11Connection;

// What a window was when a script hid it: a manager forgets that, the process that hid the window may have
// ended when another one shows it, and so it is written on the window itself.
struct HiddenNote
{
    QRect rectangle; // with the frame
    std::vector<quint32> states; // atoms of _NET_WM_STATE

    // Written once the window is off the screen.
    void writeOn(xcb_window_t window, X11Connection &connection, WindowFacts &facts) const;

    // Nothing where there is no note, or where the program has changed its window since.
    static std::optional<HiddenNote> readFrom(xcb_window_t window, WindowFacts &facts);

    static void takeFrom(xcb_window_t window, X11Connection &connection);
};

} // namespace plum
