#include "platform/x11/connection/x11_connection.h"

#include <QElapsedTimer>

#include <algorithm>
#include <poll.h>

namespace plum {

X11Connection::X11Connection()
{
    int preferredScreen = 0;
    m_connection = xcb_connect(nullptr, &preferredScreen);
    if (!isOpen())
        return;
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (int i = 0; i < preferredScreen && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    m_screen = screens.data;
}

X11Connection::~X11Connection()
{
    xcb_disconnect(m_connection);
}

bool X11Connection::isOpen() const
{
    return xcb_connection_has_error(m_connection) == 0;
}

xcb_atom_t X11Connection::atom(const char *name)
{
    const QByteArray key(name);
    if (const auto known = m_atoms.constFind(key); known != m_atoms.constEnd())
        return *known;
    const auto found
        = reply(xcb_intern_atom_reply, xcb_intern_atom, 0, static_cast<uint16_t>(key.size()), name);
    return *m_atoms.insert(key, found ? found->atom : xcb_atom_t(XCB_ATOM_NONE));
}

void X11Connection::addReceiver(EventReceiver receiver)
{
    m_receivers.push_back(std::move(receiver));
}

void X11Connection::dispatchArrived()
{
    if (!isOpen())
        return;
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
        for (const EventReceiver &receiver : m_receivers)
            receiver(*event);
    }
}

bool X11Connection::waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (isOpen()) {
        dispatchArrived();
        if (condition())
            return true;
        const qint64 left = milliseconds - elapsed.elapsed();
        if (left <= 0)
            return false;
        // The condition's own round trip may have brought events into the queue already.
        if (const XcbPointer<xcb_generic_event_t> queued{xcb_poll_for_queued_event(m_connection)}) {
            for (const EventReceiver &receiver : m_receivers)
                receiver(*queued);
            continue;
        }
        xcb_flush(m_connection);
        pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        poll(&descriptor, 1, static_cast<int>(left));
    }
    return false;
}

void X11Connection::flush()
{
    xcb_flush(m_connection);
}

void X11Connection::sync()
{
    reply(xcb_get_input_focus_reply, xcb_get_input_focus);
}

// The server keeps one mask for each window.
void X11Connection::select(xcb_window_t window)
{
    uint32_t events = 0;
    for (const Watched &watched : m_watched)
        events |= watched.window == window ? watched.events : 0;
    xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &events);
}

X11Watch::X11Watch(X11Connection &connection, xcb_window_t window, uint32_t events)
    : m_connection(connection)
    , m_watched{window, events}
{
    m_connection.m_watched.push_back(m_watched);
    m_connection.select(window);
}

X11Watch::~X11Watch()
{
    const auto same = [this](const X11Connection::Watched &watched) {
        return watched.window == m_watched.window && watched.events == m_watched.events;
    };
    m_connection.m_watched.erase(std::ranges::find_if(m_connection.m_watched, same));
    m_connection.select(m_watched.window);
}

} // namespace plum
