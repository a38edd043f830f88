#pragma once

#include <QByteArray>
#include <QHash>

#include <xcb/xcb.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <type_traits>
#include <vector>

namespace plum {

// A reply, an error or an event of XCB, which the caller frees.
struct FreeDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T> using XcbPointer = std::unique_ptr<T, FreeDeleter>;

// This program's own connection to the X server, apart from the one that Qt has: its requests keep their
// order among themselves and never wait for the user interface. Without a display, or once the server has
// gone, it is not open, and everything built on it does nothing.
class X11Connection
{
public:
    X11Connection();
    ~X11Connection();
    Q_DISABLE_COPY_MOVE(X11Connection)

    bool isOpen() const;
    xcb_connection_t *xcb() const { return m_connection; }
    const xcb_screen_t *screen() const { return m_screen; }
    xcb_window_t root() const { return m_screen ? m_screen->root : XCB_NONE; }

    // The atom of a name, asked for once.
    xcb_atom_t atom(const char *name);

    // Called for every event that arrives; the receiver ignores what is not its own.
    using EventReceiver = std::function<void(const xcb_generic_event_t &)>;
    void addReceiver(EventReceiver receiver);

    // Hands the events that have arrived to the receivers, without waiting and without a round trip.
    void dispatchArrived();

    // Sends everything and waits until `condition` holds, looking again after each batch of events, for
    // `milliseconds` at most. Returns whether the condition held in the end.
    bool waitUntil(const std::function<bool()> &condition, int milliseconds);

    // Waits for the reply of one request, given its functions and arguments:
    //   reply(xcb_get_geometry_reply, xcb_get_geometry, window)
    // Null when the request failed or the connection is not open.
    template <typename Reply, typename Cookie, typename... Parameters>
    XcbPointer<Reply> reply(Reply *(*replyFunction)(xcb_connection_t *, Cookie, xcb_generic_error_t **),
        Cookie (*request)(xcb_connection_t *, Parameters...), std::type_identity_t<Parameters>... arguments)
    {
        return XcbPointer<Reply>(
            isOpen() ? replyFunction(m_connection, request(m_connection, arguments...), nullptr) : nullptr);
    }

    void flush();

    // A round trip: when it returns, the server has carried out every request so far.
    void sync();

private:
    friend class X11Watch;

    struct Watched
    {
        xcb_window_t window;
        uint32_t events;
    };

    void select(xcb_window_t window);

    xcb_connection_t *m_connection = nullptr;
    const xcb_screen_t *m_screen = nullptr;
    QHash<QByteArray, xcb_atom_t> m_atoms;
    std::vector<EventReceiver> m_receivers;
    std::vector<Watched> m_watched;
};

// While this lives, the events of a window (the bits of the protocol's event masks) reach the receivers.
// Others may watch the same window for events of theirs.
class X11Watch
{
public:
    X11Watch(X11Connection &connection, xcb_window_t window, uint32_t events);
    ~X11Watch();
    Q_DISABLE_COPY_MOVE(X11Watch)

private:
    X11Connection &m_connection;
    X11Connection::Watched m_watched;
};

} // namespace plum
