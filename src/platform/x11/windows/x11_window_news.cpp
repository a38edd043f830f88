#include "platform/x11/windows/x11_window_news.h"

#include <algorithm>

namespace plum {

namespace {

constexpr uint8_t fromServer = 0x7f; // the other bit says that a program sent the event

// What the list of windows and the titles in it are read from.
constexpr const char *properties[]
    = {"_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING", "_NET_SUPPORTED", "_NET_WM_NAME", "WM_NAME"};

} // namespace

std::unique_ptr<News> X11WindowNews::ofTitles()
{
    return listening(XCB_NONE);
}

std::unique_ptr<News> X11WindowNews::ofEnd(xcb_window_t window)
{
    return listening(window);
}

std::unique_ptr<News> X11WindowNews::listening(xcb_window_t window)
{
    std::unique_ptr<X11WindowNews> news(new X11WindowNews(window));
    if (!news->m_connection.isOpen())
        return nullptr;
    return news;
}

X11WindowNews::X11WindowNews(xcb_window_t window)
    : m_window(window)
{
    if (!m_connection.isOpen())
        return;
    m_connection.addReceiver(
        [this](const xcb_generic_event_t &event) { m_hasArrived = m_hasArrived || concerns(event); });
    m_events = std::make_unique<QSocketNotifier>(
        xcb_get_file_descriptor(m_connection.xcb()), QSocketNotifier::Read);
    QObject::connect(m_events.get(), &QSocketNotifier::activated, m_events.get(), [this] { dispatch(); });
}

bool X11WindowNews::arrived()
{
    dispatch();
    if (!m_hasArrived)
        return false;
    m_hasArrived = false;
    listen();
    return true;
}

void X11WindowNews::dispatch()
{
    m_connection.dispatchArrived();
    // A server that has gone leaves its socket readable for ever.
    if (!m_connection.isOpen())
        m_events->setEnabled(false);
}

// A window that is moved, or an icon that blinks, is no news.
bool X11WindowNews::concerns(const xcb_generic_event_t &event)
{
    switch (event.response_type & fromServer) {
    case XCB_CREATE_NOTIFY:
    case XCB_REPARENT_NOTIFY:
        return m_window == XCB_NONE;
    case XCB_DESTROY_NOTIFY:
        return reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == m_window;
    case XCB_PROPERTY_NOTIFY: {
        const xcb_atom_t changed = reinterpret_cast<const xcb_property_notify_event_t &>(event).atom;
        return std::ranges::any_of(
            properties, [&](const char *name) { return m_connection.atom(name) == changed; });
    }
    default:
        return false;
    }
}

// Before whoever waits looks again, or what comes in between is missed.
void X11WindowNews::listen()
{
    const auto select = [this](xcb_window_t window, uint32_t events) {
        xcb_change_window_attributes(m_connection.xcb(), window, XCB_CW_EVENT_MASK, &events);
    };
    if (m_window != XCB_NONE) {
        select(m_window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    } else {
        select(m_connection.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
        for (const xcb_window_t window : m_facts.topLevels())
            select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    m_connection.sync();
}

} // namespace plum
