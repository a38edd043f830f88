#include "platform/x11/windows/window_manager.h"

#include "platform/x11/connection/x11_connection.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace plum {

namespace {

constexpr int managerPatience = 2000; // milliseconds, for the manager itself: a loaded machine makes it late
constexpr int reactionTime = 500; // milliseconds, for what it leaves for later, and for the window's program
constexpr int settleTime = 100; // milliseconds, for a frame to become as large as it is said to be
constexpr quint32 fromUser = 2; // a request's source: a program on the user's behalf

} // namespace

WindowManager::WindowManager(X11Connection &connection, WindowFacts &facts)
    : m_connection(connection)
    , m_facts(facts)
{
    m_connection.addReceiver([this](const xcb_generic_event_t &event) {
        const auto &change = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
        if (event.response_type == XCB_CONFIGURE_NOTIFY && change.window == m_runner)
            m_seenPlace = change.x;
    });
}

void WindowManager::ask(xcb_window_t window, const char *message, std::array<quint32, 5> data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = m_connection.atom(message);
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(m_connection.xcb(), 0, m_connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
}

void WindowManager::setStates(xcb_window_t window, bool isOn, const char *first, const char *second)
{
    ask(window, "_NET_WM_STATE",
        {quint32(isOn), m_connection.atom(first), second ? m_connection.atom(second) : 0, fromUser});
}

void WindowManager::place(xcb_window_t window, QPoint corner, QSize size)
{
    const bool isSized = !size.isEmpty();
    const std::array values{static_cast<quint32>(corner.x()), static_cast<quint32>(corner.y()),
        static_cast<quint32>(size.width()), static_cast<quint32>(size.height())};
    if (m_facts.managerSupports("_NET_MOVERESIZE_WINDOW")) {
        constexpr quint32 northWest = 1; // the point is the frame's own corner
        constexpr quint32 withPlace = 3 << 8;
        constexpr quint32 withSize = 3 << 10;
        ask(window, "_NET_MOVERESIZE_WINDOW",
            {northWest | withPlace | (isSized ? withSize : 0) | fromUser << 12, values[0], values[1],
                isSized ? values[2] : 0, isSized ? values[3] : 0});
        return;
    }
    constexpr uint16_t place = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y;
    constexpr uint16_t sizes = XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    xcb_configure_window(
        m_connection.xcb(), window, static_cast<uint16_t>(isSized ? place | sizes : place), values.data());
}

void WindowManager::raise(xcb_window_t window)
{
    if (m_facts.state(window) && m_facts.managerSupports("_NET_ACTIVE_WINDOW")) {
        ask(window, "_NET_ACTIVE_WINDOW", {fromUser, XCB_CURRENT_TIME});
        return;
    }
    const uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    // Menus and tips, of which a manager knows nothing, leave the keyboard where it is.
    if (m_facts.state(window) || !m_facts.hasManager())
        xcb_set_input_focus(m_connection.xcb(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
}

// A manager takes what it is asked in order, and the wish of a new window to be elsewhere is one of these
// things. So when that window is there, everything asked before has been done.
bool WindowManager::catchesUp()
{
    constexpr int16_t most = 1000;
    if (m_runner == XCB_NONE) {
        const uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        m_runner = xcb_generate_id(m_connection.xcb());
        xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_runner, m_connection.root(), -most,
            -most, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
        // Where no manager runs, it would stand in front of the windows that programs have.
        const uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(m_connection.xcb(), m_runner, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    }
    m_wantedPlace = static_cast<int16_t>(m_wantedPlace % most + 1);
    const auto place = static_cast<uint32_t>(m_wantedPlace);
    xcb_configure_window(m_connection.xcb(), m_runner, XCB_CONFIG_WINDOW_X, &place);
    return m_connection.waitUntil([this] { return m_seenPlace == m_wantedPlace; }, managerPatience);
}

bool WindowManager::waitFor(xcb_window_t window, const std::function<bool()> &condition)
{
    const X11Watch ofWindow(
        m_connection, window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    // Frames are children of the root.
    const X11Watch ofRoot(m_connection, m_connection.root(),
        XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);

    const auto holds
        = [&] { return condition() && (!m_facts.isViewable(window) || m_facts.isWhole(window)); };
    bool answers = catchesUp();
    const QDeadlineTimer deadline(reactionTime, Qt::PreciseTimer);
    bool happened = holds();
    // The first sign of what a manager does later comes before its last.
    while (
        answers && !happened && m_connection.waitUntil(holds, static_cast<int>(deadline.remainingTime()))) {
        answers = catchesUp();
        happened = holds();
    }
    // Some managers frame a window with more than they say, for ever; others with more for a moment.
    if (happened && m_facts.isViewable(window)) {
        m_connection.waitUntil(
            [&] { return m_facts.surroundings(window) == m_facts.rectangle(window); }, settleTime);
    }
    return happened;
}

} // namespace plum
