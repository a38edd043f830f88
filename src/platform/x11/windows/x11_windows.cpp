#include "platform/x11/windows/x11_windows.h"

#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/windows/hidden_note.h"

#include <algorithm>

namespace plum {

namespace {

constexpr quint32 fromUser = 2; // a request's source: a program on the user's behalf

xcb_window_t id(WindowHandle window)
{
    return static_cast<xcb_window_t>(window);
}

WindowHandle handle(xcb_window_t window)
{
    return static_cast<WindowHandle>(window);
}

} // namespace

WindowHandle X11Windows::foreground()
{
    if (m_facts.managerSupports("_NET_ACTIVE_WINDOW")) {
        const std::vector<quint32> active = m_facts.numbers(m_connection.root(), "_NET_ACTIVE_WINDOW");
        return active.empty() ? 0 : handle(active.front());
    }
    const auto focus = m_connection.reply(xcb_get_input_focus_reply, xcb_get_input_focus);
    if (!focus || focus->focus == XCB_NONE || focus->focus == m_connection.root())
        return 0;
    if (focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT)
        return underPointer();
    const xcb_window_t outermost = m_facts.outermost(focus->focus);
    const xcb_window_t client = m_facts.clientBelow(outermost);
    return handle(client == XCB_NONE ? outermost : client);
}

WindowHandle X11Windows::underPointer()
{
    const auto at = m_connection.reply(xcb_query_pointer_reply, xcb_query_pointer, m_connection.root());
    if (!at || at->child == XCB_NONE)
        return 0;
    // Menus and tips have no manager's frame: there the window itself is the answer.
    const xcb_window_t client = m_facts.clientBelow(at->child);
    return handle(client == XCB_NONE ? at->child : client);
}

bool X11Windows::isOnScreen(WindowHandle window)
{
    return m_facts.isViewable(id(window)) && m_facts.isOnThisDesktop(id(window));
}

WindowHandle X11Windows::byTitle(const QString &wanted)
{
    for (const xcb_window_t window : m_facts.topLevels()) {
        if (m_facts.title(window) == wanted)
            return handle(window);
    }
    return 0;
}

QString X11Windows::title(WindowHandle window)
{
    return window == 0 ? QString() : m_facts.title(id(window));
}

std::vector<WindowHandle> X11Windows::stacking()
{
    std::vector<WindowHandle> windows;
    std::ranges::transform(m_facts.topLevels(), std::back_inserter(windows), handle);
    return windows;
}

QRect X11Windows::rectangle(WindowHandle window)
{
    if (window == 0)
        return {};
    if (m_facts.isHidden(id(window))) {
        if (const auto note = HiddenNote::readFrom(id(window), m_facts))
            return note->rectangle;
    }
    return m_facts.rectangle(id(window));
}

void X11Windows::close(WindowHandle window)
{
    if (!m_facts.exists(id(window)))
        return;
    if (m_facts.managerSupports("_NET_CLOSE_WINDOW")) {
        m_manager.ask(id(window), "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, fromUser});
    } else {
        const xcb_atom_t wish = m_connection.atom("WM_DELETE_WINDOW");
        if (std::ranges::count(m_facts.numbers(id(window), "WM_PROTOCOLS"), wish) == 0)
            return;
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = id(window);
        event.type = m_connection.atom("WM_PROTOCOLS");
        event.data.data32[0] = wish;
        xcb_send_event(m_connection.xcb(), 0, id(window), XCB_EVENT_MASK_NO_EVENT,
            reinterpret_cast<const char *>(&event));
    }
    m_manager.waitFor(id(window), [&] { return !m_facts.isViewable(id(window)); });
}

void X11Windows::raise(xcb_window_t window)
{
    const bool canBeActive = m_facts.state(window) || !m_facts.hasManager();
    m_manager.raise(window);
    m_manager.waitFor(window,
        [&] { return m_facts.isViewable(window) && (!canBeActive || foreground() == handle(window)); });
}

void X11Windows::activate(WindowHandle window)
{
    if (m_facts.exists(id(window)) && id(window) != m_connection.root() && !m_facts.isHidden(id(window)))
        raise(id(window));
}

void X11Windows::hide(WindowHandle window)
{
    if (!m_facts.exists(id(window)) || id(window) == m_connection.root() || m_facts.isHidden(id(window)))
        return;
    const HiddenNote note{m_facts.rectangle(id(window)), m_facts.numbers(id(window), "_NET_WM_STATE")};
    xcb_unmap_window(m_connection.xcb(), id(window));
    // The manager learns of a withdrawal by this message when the window was not mapped anyway.
    xcb_unmap_notify_event_t event{};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = m_connection.root();
    event.window = id(window);
    xcb_send_event(m_connection.xcb(), 0, m_connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
    m_manager.waitFor(
        id(window), [&] { return m_facts.isHidden(id(window)) && !m_facts.isListed(id(window)); });
    note.writeOn(id(window), m_connection, m_facts);
}

// A manager places a window anew that comes back, and has forgotten whether it filled the screen.
void X11Windows::showAgain(xcb_window_t window)
{
    const auto note = HiddenNote::readFrom(window, m_facts);
    HiddenNote::takeFrom(window, m_connection);
    if (note) {
        xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, window,
            m_connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, static_cast<uint32_t>(note->states.size()),
            note->states.data());
    }
    const bool isManaged = m_facts.hasManager();
    xcb_map_window(m_connection.xcb(), window);
    m_manager.waitFor(window, [&] {
        return m_facts.isViewable(window)
            && (!isManaged
                || (m_facts.state(window) == State::Normal
                    && (m_facts.isListed(window) || !m_facts.managerSupports("_NET_CLIENT_LIST"))));
    });
    if (note && !m_facts.isSpread(window))
        place(window, note->rectangle.topLeft());
}

void X11Windows::show(WindowHandle window)
{
    if (!m_facts.exists(id(window)) || id(window) == m_connection.root())
        return;
    if (m_facts.isHidden(id(window)))
        showAgain(id(window));
    // One that is minimised is no hidden one, and stays an icon.
    if (m_facts.state(id(window)) != State::Iconic)
        raise(id(window));
}

void X11Windows::minimise(WindowHandle window)
{
    // Without a manager there is nothing that would bring it back.
    if (!m_facts.exists(id(window)) || id(window) == m_connection.root() || !m_facts.hasManager())
        return;
    if (m_facts.isHidden(id(window)))
        showAgain(id(window));
    m_manager.ask(id(window), "WM_CHANGE_STATE", {static_cast<quint32>(State::Iconic)});
    m_manager.waitFor(id(window),
        [&] { return m_facts.state(id(window)) == State::Iconic && !m_facts.isViewable(id(window)); });
}

void X11Windows::spread(xcb_window_t window)
{
    if (!m_facts.managerSupports("_NET_WM_STATE_MAXIMIZED_VERT")) {
        const QSize frame = m_facts.rectangle(window).size() - m_facts.inside(window).size();
        const xcb_screen_t *screen = m_connection.screen();
        const QSize size = QSize(screen->width_in_pixels, screen->height_in_pixels) - frame;
        m_manager.place(window, {}, size);
        m_manager.waitFor(window, [&] { return m_facts.inside(window).size() == size; });
        return;
    }
    m_manager.setStates(window, true, "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ");
    m_manager.waitFor(window, [&] { return m_facts.isViewable(window) && m_facts.isSpread(window); });
}

void X11Windows::maximise(WindowHandle window)
{
    if (!m_facts.exists(id(window)) || id(window) == m_connection.root())
        return;
    if (m_facts.isHidden(id(window)))
        showAgain(id(window));
    else if (m_facts.state(id(window)) == State::Iconic)
        activate(window);
    spread(id(window));
}

// Puts the frame there and keeps its size.
void X11Windows::place(xcb_window_t window, QPoint corner)
{
    const QSize size = m_facts.rectangle(window).size();
    QSize inside;
    // What fills the screen stays where it is, so it becomes a window of that size.
    if (m_facts.isSpread(window)) {
        m_manager.setStates(window, false, "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ");
        m_manager.setStates(window, false, "_NET_WM_STATE_FULLSCREEN");
        m_manager.waitFor(window, [&] { return !m_facts.isSpread(window); });
        inside = size - (m_facts.rectangle(window).size() - m_facts.inside(window).size());
    }
    // Openbox takes a request for the place where the window's inside is now for the mistake of a program
    // that forgets its frame, and ignores it. Coming from elsewhere it is what it is.
    if (m_facts.inside(window).topLeft() == corner && m_facts.rectangle(window).topLeft() != corner)
        m_manager.place(window, corner + QPoint(1, 1), inside);
    m_manager.place(window, corner, inside);
    m_manager.waitFor(window, [&] { return m_facts.rectangle(window) == QRect(corner, size); });
}

void X11Windows::moveTo(WindowHandle window, QPoint corner)
{
    if (!m_facts.exists(id(window)) || id(window) == m_connection.root())
        return;
    if (m_facts.isHidden(id(window))) {
        HiddenNote note = HiddenNote::readFrom(id(window), m_facts)
                              .value_or(HiddenNote{m_facts.rectangle(id(window)), {}});
        note.rectangle.moveTopLeft(corner);
        note.writeOn(id(window), m_connection, m_facts);
        return;
    }
    place(id(window), corner);
    if (m_facts.state(id(window)) != State::Iconic)
        raise(id(window));
}

void X11Windows::bringHere(WindowHandle window)
{
    if (!m_facts.exists(id(window)) || m_facts.isOnThisDesktop(id(window)))
        return;
    const std::vector<quint32> current = m_facts.numbers(m_connection.root(), "_NET_CURRENT_DESKTOP");
    m_manager.ask(id(window), "_NET_WM_DESKTOP", {current.front(), fromUser});
    m_manager.waitFor(id(window), [&] {
        return m_facts.isOnThisDesktop(id(window))
            && (m_facts.isViewable(id(window)) || m_facts.state(id(window)) != State::Normal);
    });
}

void X11Windows::setTopmost(WindowHandle window)
{
    if (!m_facts.exists(id(window)) || id(window) == m_connection.root())
        return;
    if (!m_facts.managerSupports("_NET_WM_STATE_ABOVE")) {
        const uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_connection.xcb(), id(window), XCB_CONFIG_WINDOW_STACK_MODE, &above);
        m_connection.sync();
        return;
    }
    m_manager.setStates(id(window), true, "_NET_WM_STATE_ABOVE");
    m_manager.waitFor(id(window), [&] { return m_facts.hasState(id(window), "_NET_WM_STATE_ABOVE"); });
}

std::unique_ptr<News> X11Windows::newsOfEnd(WindowHandle window)
{
    return X11WindowNews::ofEnd(id(window));
}

} // namespace plum
