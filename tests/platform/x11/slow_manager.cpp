#include "slow_manager.h"

#include <poll.h>
#include <utility>

namespace plum {

using namespace std::chrono_literals;

namespace {

constexpr auto delay = 150ms; // of what is left for later
constexpr int border = 4; // pixels, of a frame
constexpr int caption = 24;

} // namespace

SlowManager::SlowManager()
{
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.xcb(), m_connection.root(), XCB_CW_EVENT_MASK, &events);
    std::vector<quint32> supported;
    for (const char *name :
        {"_NET_CLIENT_LIST", "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"})
        supported.push_back(m_connection.atom(name));
    setNumbers(m_connection.root(), "_NET_SUPPORTED", XCB_ATOM_ATOM, supported);
    setNumbers(m_connection.root(), "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL, {0});
    m_connection.addReceiver([this](const xcb_generic_event_t &event) { receive(event); });
    m_connection.sync();
    m_thread = std::thread([this] { run(); });
}

SlowManager::~SlowManager()
{
    m_ends = true;
    m_thread.join();
}

void SlowManager::run()
{
    constexpr int betweenLooks = 5; // milliseconds
    pollfd socket{xcb_get_file_descriptor(m_connection.xcb()), POLLIN, 0};
    while (!m_ends && m_connection.isOpen()) {
        poll(&socket, 1, betweenLooks);
        m_connection.dispatchArrived();
        if (m_rest && Clock::now() >= m_restAt)
            finish(*std::exchange(m_rest, std::nullopt));
        m_connection.flush();
    }
}

void SlowManager::receive(const xcb_generic_event_t &event)
{
    constexpr uint8_t sentBit = 0x80;
    switch (event.response_type & ~sentBit) {
    case XCB_MAP_REQUEST:
        manage(reinterpret_cast<const xcb_map_request_event_t &>(event).window);
        break;
    case XCB_CONFIGURE_REQUEST:
        configure(reinterpret_cast<const xcb_configure_request_event_t &>(event));
        break;
    case XCB_CLIENT_MESSAGE:
        obey(reinterpret_cast<const xcb_client_message_event_t &>(event));
        break;
    default:
        break;
    }
}

void SlowManager::manage(xcb_window_t window)
{
    const auto size = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry, window);
    if (!size)
        return;
    m_window = window;
    m_frame = xcb_generate_id(m_connection.xcb());
    xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_frame, m_connection.root(), size->x,
        size->y, static_cast<uint16_t>(size->width + 2 * border),
        static_cast<uint16_t>(size->height + caption + border), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_reparent_window(m_connection.xcb(), window, m_frame, border, caption);
    setExtents({border, border, caption, border});
    constexpr quint32 normal = 1;
    setNumbers(window, "WM_STATE", m_connection.atom("WM_STATE"), {normal, XCB_NONE});
    setNumbers(window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {0});
    xcb_map_window(m_connection.xcb(), window);
    xcb_map_window(m_connection.xcb(), m_frame);
    setNumbers(m_connection.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {window});
}

// Whoever has no frame gets what it wishes.
void SlowManager::configure(const xcb_configure_request_event_t &wish)
{
    const std::array values{static_cast<uint32_t>(wish.x), static_cast<uint32_t>(wish.y)};
    constexpr uint16_t place = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y;
    if (wish.window != m_window && (wish.value_mask & place) != 0)
        xcb_configure_window(m_connection.xcb(), wish.window, place, values.data());
}

void SlowManager::obey(const xcb_client_message_event_t &message)
{
    if (message.window != m_window)
        return;
    m_restAt = Clock::now() + delay;
    if (message.type == m_connection.atom("_NET_WM_STATE")) {
        setNumbers(
            m_window, "_NET_WM_STATE", XCB_ATOM_ATOM, {message.data.data32[1], message.data.data32[2]});
        const xcb_screen_t *screen = m_connection.screen();
        constexpr uint16_t all
            = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        const std::array<uint32_t, 4> frame{0, 0, screen->width_in_pixels, screen->height_in_pixels};
        const std::array<uint32_t, 4> inside{0, caption, frame[2], frame[3] - caption};
        xcb_configure_window(m_connection.xcb(), m_frame, all, frame.data());
        xcb_configure_window(m_connection.xcb(), m_window, all, inside.data());
        m_rest = Rest::Extents;
    } else if (message.type == m_connection.atom("_NET_WM_DESKTOP")) {
        setNumbers(m_window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {message.data.data32[0]});
        m_rest = Rest::Showing;
    }
}

void SlowManager::finish(Rest rest)
{
    if (rest == Rest::Extents)
        setExtents({0, 0, caption, 0});
    else
        xcb_map_window(m_connection.xcb(), m_frame);
}

void SlowManager::setExtents(const std::array<quint32, 4> &sides)
{
    setNumbers(m_window, "_NET_FRAME_EXTENTS", XCB_ATOM_CARDINAL, {sides.begin(), sides.end()});
}

void SlowManager::setNumbers(
    xcb_window_t window, const char *property, xcb_atom_t type, std::vector<quint32> values)
{
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, window, m_connection.atom(property), type,
        32, static_cast<uint32_t>(values.size()), values.data());
}

} // namespace plum
