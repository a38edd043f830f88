#include "platform/x11/windows/x11_windows.h"

#include "platform/x11/connection/x11_connection.h"

#include <algorithm>
#include <array>
#include <ranges>

namespace plum {

namespace {

constexpr int reactionTime = 500; // milliseconds
constexpr quint32 fromUser = 2; // a request's source: a program on the user's behalf
constexpr quint32 addState = 1;

xcb_window_t id(WindowHandle window)
{
    return static_cast<xcb_window_t>(window);
}

bool contains(const std::vector<quint32> &values, quint32 wanted)
{
    return std::ranges::find(values, wanted) != values.end();
}

WindowHandle handle(xcb_window_t window)
{
    return static_cast<WindowHandle>(window);
}

} // namespace

std::vector<quint32> X11Windows::numbers(xcb_window_t window, const char *property)
{
    constexpr uint32_t most = 1 << 16;
    const auto found = m_connection.reply(xcb_get_property_reply, xcb_get_property, 0, window,
        m_connection.atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    if (!found || found->format != 32)
        return {};
    const auto *first = static_cast<const quint32 *>(xcb_get_property_value(found.get()));
    return {first, first + static_cast<size_t>(xcb_get_property_value_length(found.get())) / sizeof(quint32)};
}

QString X11Windows::title(xcb_window_t window)
{
    constexpr uint32_t most = 1 << 14;
    for (const char *property : {"_NET_WM_NAME", "WM_NAME"}) {
        const auto found = m_connection.reply(xcb_get_property_reply, xcb_get_property, 0, window,
            m_connection.atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
        if (!found || found->format != 8)
            continue;
        const QByteArrayView bytes(static_cast<const char *>(xcb_get_property_value(found.get())),
            xcb_get_property_value_length(found.get()));
        return found->type == m_connection.atom("UTF8_STRING") ? QString::fromUtf8(bytes)
                                                               : QString::fromLatin1(bytes);
    }
    return {};
}

std::optional<X11Windows::State> X11Windows::state(xcb_window_t window)
{
    const std::vector<quint32> values = numbers(window, "WM_STATE");
    if (values.empty())
        return {};
    return static_cast<State>(values.front());
}

bool X11Windows::hasState(xcb_window_t window, const char *name)
{
    return contains(numbers(window, "_NET_WM_STATE"), m_connection.atom(name));
}

bool X11Windows::managerSupports(const char *name)
{
    return contains(numbers(m_connection.root(), "_NET_SUPPORTED"), m_connection.atom(name));
}

bool X11Windows::isViewable(xcb_window_t window)
{
    const auto found = m_connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes, window);
    return found && found->map_state == XCB_MAP_STATE_VIEWABLE;
}

// Off the screen and unknown to the window manager, which a minimised window is not.
bool X11Windows::isHidden(xcb_window_t window)
{
    return !isViewable(window) && state(window).value_or(State::Withdrawn) == State::Withdrawn;
}

bool X11Windows::exists(xcb_window_t window)
{
    return window != XCB_NONE
        && m_connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes, window) != nullptr;
}

X11Windows::FrameExtents X11Windows::frameExtents(xcb_window_t window)
{
    const std::vector<quint32> values = numbers(window, "_NET_FRAME_EXTENTS");
    if (values.size() != 4)
        return {};
    return {static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
        static_cast<int>(values[3])};
}

// All windows of programs, the topmost first.
std::vector<xcb_window_t> X11Windows::topLevels()
{
    std::vector<xcb_window_t> windows = numbers(m_connection.root(), "_NET_CLIENT_LIST_STACKING");
    if (windows.empty())
        windows = numbers(m_connection.root(), "_NET_CLIENT_LIST");
    // The list of a manager that has one may be empty; the root then has children all the same.
    if (windows.empty() && !managerSupports("_NET_CLIENT_LIST")) {
        const auto tree = m_connection.reply(xcb_query_tree_reply, xcb_query_tree, m_connection.root());
        if (tree) {
            const xcb_window_t *children = xcb_query_tree_children(tree.get());
            windows.assign(children, children + xcb_query_tree_children_length(tree.get()));
        }
    }
    std::ranges::reverse(windows);
    return windows;
}

bool X11Windows::isListed(xcb_window_t window)
{
    return contains(numbers(m_connection.root(), "_NET_CLIENT_LIST"), window)
        || contains(numbers(m_connection.root(), "_NET_CLIENT_LIST_STACKING"), window);
}

// Whether the frame around the window, which may grow in steps, has reached the window's size.
bool X11Windows::isWhole(xcb_window_t window)
{
    if (!isViewable(window))
        return false;
    xcb_window_t frame = window;
    while (const auto tree = m_connection.reply(xcb_query_tree_reply, xcb_query_tree, frame)) {
        if (tree->parent == m_connection.root() || tree->parent == XCB_NONE)
            break;
        frame = tree->parent;
    }
    const auto inner = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry, window);
    const auto outer = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry, frame);
    const auto at = clientCorner(window);
    if (!inner || !outer || !at)
        return false;
    const int border = 2 * outer->border_width;
    return QRect(outer->x, outer->y, outer->width + border, outer->height + border)
        .contains(QRect(*at, QSize(inner->width, inner->height)));
}

// The program's window inside a window manager's frame: the first one below `window`, level by level, that
// the manager gave a state.
xcb_window_t X11Windows::clientBelow(xcb_window_t window)
{
    std::vector<xcb_window_t> level{window};
    while (!level.empty()) {
        for (const xcb_window_t candidate : level) {
            if (state(candidate))
                return candidate;
        }
        std::vector<xcb_window_t> next;
        for (const xcb_window_t parent : level) {
            const auto tree = m_connection.reply(xcb_query_tree_reply, xcb_query_tree, parent);
            if (!tree)
                continue;
            const xcb_window_t *children = xcb_query_tree_children(tree.get());
            next.insert(next.end(), children, children + xcb_query_tree_children_length(tree.get()));
        }
        level = std::move(next);
    }
    return XCB_NONE;
}

WindowHandle X11Windows::foreground()
{
    const std::vector<quint32> active = numbers(m_connection.root(), "_NET_ACTIVE_WINDOW");
    return active.empty() ? 0 : handle(active.front());
}

WindowHandle X11Windows::underPointer()
{
    const auto at = m_connection.reply(xcb_query_pointer_reply, xcb_query_pointer, m_connection.root());
    if (!at || at->child == XCB_NONE)
        return 0;
    // Menus and tips have no manager's frame: there the window itself is the answer.
    const xcb_window_t client = clientBelow(at->child);
    return handle(client == XCB_NONE ? at->child : client);
}

// Some window managers leave the windows of the other desktops where they are and paint over them.
bool X11Windows::isOnThisDesktop(xcb_window_t window)
{
    const std::vector<quint32> desktop = numbers(window, "_NET_WM_DESKTOP");
    const std::vector<quint32> current = numbers(m_connection.root(), "_NET_CURRENT_DESKTOP");
    constexpr quint32 every = 0xffffffff;
    return desktop.empty() || current.empty() || desktop.front() == every
        || desktop.front() == current.front();
}

bool X11Windows::isOnScreen(WindowHandle window)
{
    return isViewable(id(window)) && isOnThisDesktop(id(window));
}

WindowHandle X11Windows::byTitle(const QString &wanted)
{
    for (const xcb_window_t window : topLevels()) {
        if (title(window) == wanted)
            return handle(window);
    }
    return 0;
}

std::optional<QPoint> X11Windows::clientCorner(xcb_window_t window)
{
    const auto at = m_connection.reply(
        xcb_translate_coordinates_reply, xcb_translate_coordinates, window, m_connection.root(), 0, 0);
    return at ? std::optional(QPoint(at->dst_x, at->dst_y)) : std::nullopt;
}

QRect X11Windows::rectangle(WindowHandle window)
{
    if (window == 0)
        return {};
    const auto size = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry, id(window));
    const auto at = clientCorner(id(window));
    if (!size || !at)
        return {};
    if (const auto hidden = m_hidden.find(window); hidden != m_hidden.end()) {
        if (!isViewable(id(window)))
            return *hidden;
        m_hidden.erase(hidden); // its own program has shown it again
    }
    const FrameExtents frame = frameExtents(id(window));
    return {at->x() - frame.left, at->y() - frame.top, size->width + frame.left + frame.right,
        size->height + frame.top + frame.bottom};
}

// Sends a message about `window` to the window manager.
void X11Windows::askManager(xcb_window_t window, const char *message, std::array<quint32, 5> data)
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

// Waits for a change of `window`, or of the manager's own state, to make `condition` true.
bool X11Windows::waitFor(xcb_window_t window, const std::function<bool()> &condition)
{
    const auto watch = [this](xcb_window_t watched, uint32_t events) {
        xcb_change_window_attributes(m_connection.xcb(), watched, XCB_CW_EVENT_MASK, &events);
    };
    watch(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    // Frames are children of the root.
    watch(m_connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    const bool happened = m_connection.waitUntil(condition, reactionTime);
    watch(window, XCB_EVENT_MASK_NO_EVENT);
    watch(m_connection.root(), XCB_EVENT_MASK_NO_EVENT);
    m_connection.flush();
    return happened;
}

void X11Windows::close(WindowHandle window)
{
    if (!exists(id(window)))
        return;
    if (managerSupports("_NET_CLOSE_WINDOW")) {
        askManager(id(window), "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, fromUser});
    } else {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = id(window);
        event.type = m_connection.atom("WM_PROTOCOLS");
        event.data.data32[0] = m_connection.atom("WM_DELETE_WINDOW");
        xcb_send_event(m_connection.xcb(), 0, id(window), XCB_EVENT_MASK_NO_EVENT,
            reinterpret_cast<const char *>(&event));
    }
    waitFor(id(window), [&] { return !isViewable(id(window)); });
}

void X11Windows::activate(WindowHandle window)
{
    if (!exists(id(window)))
        return;
    askManager(id(window), "_NET_ACTIVE_WINDOW", {fromUser, XCB_CURRENT_TIME});
    waitFor(id(window), [&] { return foreground() == window && isWhole(id(window)); });
}

void X11Windows::hide(WindowHandle window)
{
    if (!exists(id(window)) || !state(id(window)))
        return;
    m_hidden.insert(window, rectangle(window));
    xcb_unmap_window(m_connection.xcb(), id(window));
    // The manager learns of a withdrawal by this message when the window was not mapped anyway.
    xcb_unmap_notify_event_t event{};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = m_connection.root();
    event.window = id(window);
    xcb_send_event(m_connection.xcb(), 0, m_connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
    waitFor(id(window), [&] {
        return !isViewable(id(window)) && state(id(window)).value_or(State::Withdrawn) == State::Withdrawn
            && !isListed(id(window));
    });
}

void X11Windows::show(WindowHandle window)
{
    if (!exists(id(window)) || state(id(window)).value_or(State::Withdrawn) != State::Withdrawn)
        return;
    const QRect before = m_hidden.take(window);
    xcb_map_window(m_connection.xcb(), id(window));
    waitFor(id(window), [&] {
        return isWhole(id(window)) && state(id(window)) == State::Normal
            && (isListed(id(window)) || !managerSupports("_NET_CLIENT_LIST"));
    });
    // A manager places a window anew that comes back.
    if (before.isValid())
        moveTo(window, before.topLeft());
}

void X11Windows::minimise(WindowHandle window)
{
    if (!exists(id(window)))
        return;
    if (isHidden(id(window)))
        show(window);
    askManager(id(window), "WM_CHANGE_STATE", {static_cast<quint32>(State::Iconic)});
    waitFor(id(window), [&] { return state(id(window)) == State::Iconic; });
}

void X11Windows::maximise(WindowHandle window)
{
    if (!exists(id(window)))
        return;
    if (isHidden(id(window)))
        show(window);
    else if (state(id(window)) == State::Iconic)
        activate(window);
    askManager(id(window), "_NET_WM_STATE",
        {addState, m_connection.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
            m_connection.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), fromUser});
    waitFor(id(window), [&] {
        return hasState(id(window), "_NET_WM_STATE_MAXIMIZED_VERT")
            && hasState(id(window), "_NET_WM_STATE_MAXIMIZED_HORZ") && isWhole(id(window));
    });
}

void X11Windows::requestMove(xcb_window_t window, QPoint corner)
{
    if (managerSupports("_NET_MOVERESIZE_WINDOW")) {
        constexpr quint32 northWest = 1; // the point is the frame's own corner
        constexpr quint32 withX = 1 << 8;
        constexpr quint32 withY = 1 << 9;
        askManager(window, "_NET_MOVERESIZE_WINDOW",
            {northWest | withX | withY | fromUser << 12, static_cast<quint32>(corner.x()),
                static_cast<quint32>(corner.y())});
    } else {
        const std::array values{static_cast<quint32>(corner.x()), static_cast<quint32>(corner.y())};
        xcb_configure_window(
            m_connection.xcb(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values.data());
    }
}

void X11Windows::moveTo(WindowHandle window, QPoint corner)
{
    if (!exists(id(window)))
        return;
    if (const auto hidden = m_hidden.find(window); hidden != m_hidden.end() && !isViewable(id(window))) {
        hidden->moveTopLeft(corner);
        return;
    }
    // Openbox takes a request for the place where the window's inside is now for the mistake of a program
    // that forgets its frame, and ignores it. Coming from elsewhere it is what it is.
    if (clientCorner(id(window)) == corner && rectangle(window).topLeft() != corner)
        requestMove(id(window), corner + QPoint(1, 1));
    requestMove(id(window), corner);
    waitFor(id(window), [&] { return rectangle(window).topLeft() == corner; });
}

void X11Windows::bringHere(WindowHandle window)
{
    if (isOnThisDesktop(id(window)))
        return;
    const std::vector<quint32> current = numbers(m_connection.root(), "_NET_CURRENT_DESKTOP");
    askManager(id(window), "_NET_WM_DESKTOP", {current.front(), fromUser});
    waitFor(id(window), [&] { return isOnThisDesktop(id(window)); });
}

void X11Windows::setTopmost(WindowHandle window)
{
    if (!exists(id(window)))
        return;
    askManager(
        id(window), "_NET_WM_STATE", {addState, m_connection.atom("_NET_WM_STATE_ABOVE"), 0, fromUser});
    waitFor(id(window), [&] { return hasState(id(window), "_NET_WM_STATE_ABOVE"); });
}

} // namespace plum
