#include "platform/x11/windows/window_facts.h"

#include "platform/x11/connection/x11_connection.h"

#include <algorithm>

namespace plum {

namespace {

bool contains(const std::vector<quint32> &values, quint32 wanted)
{
    return std::ranges::find(values, wanted) != values.end();
}

} // namespace

std::vector<quint32> WindowFacts::numbers(xcb_window_t window, const char *property)
{
    constexpr uint32_t most = 1 << 16;
    const auto found = m_connection.reply(xcb_get_property_reply, xcb_get_property, 0, window,
        m_connection.atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    if (!found || found->format != 32)
        return {};
    const auto *first = static_cast<const quint32 *>(xcb_get_property_value(found.get()));
    return {first, first + static_cast<size_t>(xcb_get_property_value_length(found.get())) / sizeof(quint32)};
}

bool WindowFacts::exists(xcb_window_t window)
{
    return window != XCB_NONE
        && m_connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes, window) != nullptr;
}

bool WindowFacts::isViewable(xcb_window_t window)
{
    const auto found = m_connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes, window);
    return found && found->map_state == XCB_MAP_STATE_VIEWABLE;
}

QString WindowFacts::title(xcb_window_t window)
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

// Only one program can ask for the wishes of all others.
bool WindowFacts::hasManager()
{
    const auto root
        = m_connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes, m_connection.root());
    return root && (root->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

bool WindowFacts::managerSupports(const char *name)
{
    return contains(numbers(m_connection.root(), "_NET_SUPPORTED"), m_connection.atom(name)) && hasManager();
}

std::optional<WindowFacts::State> WindowFacts::state(xcb_window_t window)
{
    const std::vector<quint32> values = numbers(window, "WM_STATE");
    if (values.empty())
        return {};
    return static_cast<State>(values.front());
}

bool WindowFacts::hasState(xcb_window_t window, const char *name)
{
    return contains(numbers(window, "_NET_WM_STATE"), m_connection.atom(name));
}

bool WindowFacts::isSpread(xcb_window_t window)
{
    const std::vector<quint32> states = numbers(window, "_NET_WM_STATE");
    return contains(states, m_connection.atom("_NET_WM_STATE_FULLSCREEN"))
        || (contains(states, m_connection.atom("_NET_WM_STATE_MAXIMIZED_VERT"))
            && contains(states, m_connection.atom("_NET_WM_STATE_MAXIMIZED_HORZ")));
}

bool WindowFacts::isHidden(xcb_window_t window)
{
    return !isViewable(window) && state(window).value_or(State::Withdrawn) == State::Withdrawn;
}

bool WindowFacts::isListed(xcb_window_t window)
{
    return contains(numbers(m_connection.root(), "_NET_CLIENT_LIST"), window)
        || contains(numbers(m_connection.root(), "_NET_CLIENT_LIST_STACKING"), window);
}

// Some window managers leave the windows of the other desktops where they are and paint over them.
bool WindowFacts::isOnThisDesktop(xcb_window_t window)
{
    const std::vector<quint32> desktop = numbers(window, "_NET_WM_DESKTOP");
    const std::vector<quint32> current = numbers(m_connection.root(), "_NET_CURRENT_DESKTOP");
    constexpr quint32 every = 0xffffffff;
    return desktop.empty() || current.empty() || desktop.front() == every
        || desktop.front() == current.front();
}

QRect WindowFacts::inside(xcb_window_t window)
{
    const auto size = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry, window);
    const auto at = m_connection.reply(
        xcb_translate_coordinates_reply, xcb_translate_coordinates, window, m_connection.root(), 0, 0);
    return size && at ? QRect(at->dst_x, at->dst_y, size->width, size->height) : QRect();
}

QRect WindowFacts::rectangle(xcb_window_t window)
{
    const std::vector<quint32> sides = numbers(window, "_NET_FRAME_EXTENTS"); // left, right, top, bottom
    // What is said about a window before it is shown, or after, holds for no frame.
    if (sides.size() != 4 || state(window).value_or(State::Withdrawn) == State::Withdrawn)
        return surroundings(window);
    const QRect within = inside(window);
    if (within.isNull())
        return {};
    return within.adjusted(-static_cast<int>(sides[0]), -static_cast<int>(sides[2]),
        static_cast<int>(sides[1]), static_cast<int>(sides[3]));
}

QRect WindowFacts::surroundings(xcb_window_t window)
{
    const auto outer = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry, outermost(window));
    if (!outer)
        return {};
    const int borders = 2 * outer->border_width;
    return {outer->x, outer->y, outer->width + borders, outer->height + borders};
}

bool WindowFacts::isWhole(xcb_window_t window)
{
    return isViewable(window) && surroundings(window).contains(rectangle(window));
}

std::vector<xcb_window_t> WindowFacts::topLevels()
{
    std::vector<xcb_window_t> windows = numbers(m_connection.root(), "_NET_CLIENT_LIST_STACKING");
    if (windows.empty())
        windows = numbers(m_connection.root(), "_NET_CLIENT_LIST");
    // The list of a manager that has one may be empty; the root then has children all the same.
    if (!managerSupports("_NET_CLIENT_LIST")) {
        windows.clear();
        const auto tree = m_connection.reply(xcb_query_tree_reply, xcb_query_tree, m_connection.root());
        if (tree) {
            const xcb_window_t *children = xcb_query_tree_children(tree.get());
            windows.assign(children, children + xcb_query_tree_children_length(tree.get()));
        }
    }
    std::ranges::reverse(windows);
    return windows;
}

xcb_window_t WindowFacts::clientBelow(xcb_window_t window)
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

xcb_window_t WindowFacts::outermost(xcb_window_t window)
{
    while (const auto tree = m_connection.reply(xcb_query_tree_reply, xcb_query_tree, window)) {
        if (tree->parent == m_connection.root() || tree->parent == XCB_NONE)
            break;
        window = tree->parent;
    }
    return window;
}

} // namespace plum
