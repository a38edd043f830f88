#pragma once

#include "platform/x11/connection/x11_connection.h"

#include <array>
#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

namespace plum {

// A window manager that says first what it has done and does a part of it later, as the real ones do now and
// then: what the frame of a maximised window measures, and showing a window that comes from another desktop.
// Everything that it is asked meanwhile it does at once.
class SlowManager
{
public:
    SlowManager();
    ~SlowManager();
    Q_DISABLE_COPY_MOVE(SlowManager)

private:
    using Clock = std::chrono::steady_clock;

    // What is left for later, of the window that it has a frame for.
    enum class Rest { Extents, Showing };

    void run();
    void receive(const xcb_generic_event_t &event);
    void manage(xcb_window_t window);
    void configure(const xcb_configure_request_event_t &wish);
    void obey(const xcb_client_message_event_t &message);
    void finish(Rest rest);
    void setExtents(const std::array<quint32, 4> &sides); // left, right, top, bottom
    void setNumbers(xcb_window_t window, const char *property, xcb_atom_t type, std::vector<quint32> values);

    X11Connection m_connection;
    xcb_window_t m_frame = XCB_NONE;
    xcb_window_t m_window = XCB_NONE;
    std::optional<Rest> m_rest;
    Clock::time_point m_restAt;
    std::atomic<bool> m_ends = false;
    std::thread m_thread;
};

} // namespace plum
