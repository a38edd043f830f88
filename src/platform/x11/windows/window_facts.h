#pragma once

#include <QRect>
#include <QString>

#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace plum {

class X11Connection;

// What the X server, and the window manager by the properties that it keeps, say about windows. Nothing here
// changes anything.
class WindowFacts
{
public:
    // ICCCM states of a window that a window manager knows.
    enum class State : quint32 {
        Withdrawn = 0,
        Normal = 1,
        Iconic = 3,
    };

    explicit WindowFacts(X11Connection &connection)
        : m_connection(connection)
    {
    }

    // The values of a property of 32-bit values; none when there is no such property.
    std::vector<quint32> numbers(xcb_window_t window, const char *property);

    bool exists(xcb_window_t window);
    bool isViewable(xcb_window_t window);
    QString title(xcb_window_t window);

    // Without a window manager nobody frames windows, and nobody answers.
    bool hasManager();
    bool managerSupports(const char *name);

    // Nothing for a window that no manager knows.
    std::optional<State> state(xcb_window_t window);
    bool hasState(xcb_window_t window, const char *name);
    bool isSpread(xcb_window_t window); // maximised both ways, or over the whole screen
    bool isHidden(
        xcb_window_t window); // off the screen and unknown to the manager, which a minimised one is not
    bool isListed(xcb_window_t window);
    bool isOnThisDesktop(xcb_window_t window);

    // The inside of the window, on the screen. Null for no window.
    QRect inside(xcb_window_t window);

    // The window with its frame, as its manager counts that; with its border where nobody frames it.
    QRect rectangle(xcb_window_t window);

    // The outermost window around it, borders included: what the server has there.
    QRect surroundings(xcb_window_t window);

    // Whether the window is on the screen, and within what the server has around it: while a manager works,
    // its frame, the window in it and what it says of both change one after the other.
    bool isWhole(xcb_window_t window);

    // All windows of programs, the topmost first.
    std::vector<xcb_window_t> topLevels();

    // The program's window inside a manager's frame: the first one below `window`, level by level, that the
    // manager gave a state. XCB_NONE when there is none.
    xcb_window_t clientBelow(xcb_window_t window);

    // The window on the root that `window` is in.
    xcb_window_t outermost(xcb_window_t window);

private:
    X11Connection &m_connection;
};

} // namespace plum
