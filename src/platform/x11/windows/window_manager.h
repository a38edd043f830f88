#pragma once

#include "platform/x11/windows/window_facts.h"

#include <array>
#include <functional>

namespace plum {

// Asks the window manager for changes and waits until they have been made. Where no manager runs, the
// requests that the server itself can carry out are carried out at once.
class WindowManager
{
public:
    WindowManager(X11Connection &connection, WindowFacts &facts);

    // Sends a message about `window` to the manager.
    void ask(xcb_window_t window, const char *message, std::array<quint32, 5> data);

    // Adds (or takes away) up to two of the states that the manager keeps of a window.
    void setStates(xcb_window_t window, bool isOn, const char *first, const char *second = nullptr);

    // Puts the outer corner there; `size`, unless it is empty, is the new one of the inside.
    void place(xcb_window_t window, QPoint corner, QSize size);

    // Above all others that are not above by a state of their own; without a manager the keyboard goes there
    // too.
    void raise(xcb_window_t window);

    // Waits until the manager has done all that it was asked, `condition` holds, and the window's frame and
    // what the manager says of it agree. False when a manager did not answer for two seconds, or when it had
    // answered and half a second later nothing had come of it.
    bool waitFor(xcb_window_t window, const std::function<bool()> &condition);

private:
    bool catchesUp();

    X11Connection &m_connection;
    WindowFacts &m_facts;
    xcb_window_t m_runner
        = XCB_NONE; // a window that is never shown, whose moves the manager makes in their turn
    int16_t m_wantedPlace = 0;
    int16_t m_seenPlace = 0;
};

} // namespace plum
