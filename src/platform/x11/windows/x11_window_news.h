#pragma once

#include "platform/news.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/windows/window_facts.h"

#include <QSocketNotifier>

#include <memory>

namespace plum {

// What the X server tells of windows. The connection is its own: which events of a window the server sends is
// kept for each connection, and it watches windows that others watch in their own way.
class X11WindowNews final : public News
{
public:
    // Null where the server takes no further connection. Of windows that come, and of their titles:
    static std::unique_ptr<News> ofTitles();
    // Of one window: that it goes.
    static std::unique_ptr<News> ofEnd(xcb_window_t window);

    bool arrived() override;

private:
    explicit X11WindowNews(xcb_window_t window);

    static std::unique_ptr<News> listening(xcb_window_t window);
    void dispatch();
    bool concerns(const xcb_generic_event_t &event);
    void listen();

    X11Connection m_connection;
    WindowFacts m_facts{m_connection};
    std::unique_ptr<QSocketNotifier> m_events;
    xcb_window_t m_window; // XCB_NONE for the titles of all
    bool m_hasArrived = true;
};

} // namespace plum
