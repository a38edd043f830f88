#include "platform/x11/windows/new_window_watch.h"

#include "platform/x11/connection/x11_connection.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <poll.h>
#include <ranges>
#include <unistd.h>

namespace plum {

namespace {

constexpr std::chrono::seconds longestWait{15};

} // namespace

NewWindowWatch::NewWindowWatch(pid_t session, ShowState state, QObject *parent)
    : QObject(parent)
    , m_session(session)
    , m_state(state)
    , m_connection(std::make_unique<X11Connection>())
{
    QTimer::singleShot(longestWait, this, &QObject::deleteLater);
    if (!m_connection->isOpen())
        return;
    // The window manager lists a window there once it manages it.
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->xcb(), m_connection->root(), XCB_CW_EVENT_MASK, &events);
    m_connection->addReceiver([this](const xcb_generic_event_t &) { m_changed = true; });
    m_connection->flush();
    m_events = new QSocketNotifier(xcb_get_file_descriptor(m_connection->xcb()), QSocketNotifier::Read, this);
    connect(m_events, &QSocketNotifier::activated, this, &NewWindowWatch::look);
    QMetaObject::invokeMethod(this, &NewWindowWatch::look, Qt::QueuedConnection);
}

NewWindowWatch::~NewWindowWatch()
{
    // Before the descriptor that it watches.
    delete m_events;
}

std::vector<quint32> NewWindowWatch::numbers(xcb_window_t window, const char *property)
{
    constexpr uint32_t most = 1 << 16;
    const auto found = m_connection->reply(xcb_get_property_reply, xcb_get_property, 0, window,
        m_connection->atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    if (!found || found->format != 32)
        return {};
    const auto *first = static_cast<const quint32 *>(xcb_get_property_value(found.get()));
    return {first, first + static_cast<size_t>(xcb_get_property_value_length(found.get())) / sizeof(quint32)};
}

// A program may put up its window from a process below the one that was started.
bool NewWindowWatch::belongsToSession(xcb_window_t window)
{
    const std::vector<quint32> process = numbers(window, "_NET_WM_PID");
    return !process.empty() && getsid(static_cast<pid_t>(process.front())) == m_session;
}

xcb_window_t NewWindowWatch::find()
{
    const std::vector<quint32> windows = numbers(m_connection->root(), "_NET_CLIENT_LIST");
    const auto found
        = std::ranges::find_if(windows, [this](quint32 window) { return belongsToSession(window); });
    return found == windows.end() ? xcb_window_t(XCB_NONE) : *found;
}

void NewWindowWatch::finishBefore(const QDeadlineTimer &deadline)
{
    pollfd socket{xcb_get_file_descriptor(m_connection->xcb()), POLLIN, 0};
    for (look(); !m_isDone && !deadline.hasExpired(); look())
        poll(&socket, 1, static_cast<int>(deadline.remainingTime()));
}

void NewWindowWatch::look()
{
    if (m_isDone)
        return;
    xcb_window_t window = XCB_NONE;
    do {
        m_changed = false;
        window = find();
        // A change that came together with an answer has left the socket and would wake nobody.
        m_connection->dispatchArrived();
    } while (window == XCB_NONE && m_changed);
    if (window != XCB_NONE) {
        apply(window);
        m_connection->sync();
    } else if (m_connection->isOpen()) {
        return;
    }
    m_isDone = true;
    if (m_events)
        m_events->setEnabled(false);
    deleteLater();
}

void NewWindowWatch::apply(xcb_window_t window)
{
    constexpr quint32 fromUser = 2;
    constexpr quint32 addState = 1;
    constexpr quint32 iconic = 3;
    switch (m_state) {
    case ShowState::Hidden: {
        xcb_unmap_window(m_connection->xcb(), window);
        xcb_unmap_notify_event_t event{};
        event.response_type = XCB_UNMAP_NOTIFY;
        event.event = m_connection->root();
        event.window = window;
        xcb_send_event(m_connection->xcb(), 0, m_connection->root(),
            XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
            reinterpret_cast<const char *>(&event));
        break;
    }
    case ShowState::Minimised:
        tellRoot(window, "WM_CHANGE_STATE", {iconic});
        break;
    case ShowState::Maximised:
        tellRoot(window, "_NET_WM_STATE",
            {addState, m_connection->atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                m_connection->atom("_NET_WM_STATE_MAXIMIZED_HORZ"), fromUser});
        break;
    case ShowState::Normal:
        break;
    }
}

void NewWindowWatch::tellRoot(xcb_window_t window, const char *message, std::vector<quint32> data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = m_connection->atom(message);
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(m_connection->xcb(), 0, m_connection->root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
}

} // namespace plum
