#include "desktop/support/server_view.h"

#include "platform/x11/keyboard/xcb_xkb.h"

#include <QList>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace plum {

namespace {

struct Free
{
    void operator()(void *memory) const { std::free(memory); }
};

template <typename Reply> std::unique_ptr<Reply, Free> owned(Reply *reply)
{
    return std::unique_ptr<Reply, Free>(reply);
}

} // namespace

ServerView::ServerView(const QString &display)
    : m_connection(xcb_connect(display.toLatin1().constData(), nullptr))
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
{
    owned(xcb_xkb_use_extension_reply(m_connection, xcb_xkb_use_extension(m_connection, 1, 0), nullptr));
}

ServerView::~ServerView()
{
    xcb_disconnect(m_connection);
}

xcb_atom_t ServerView::atom(const char *name)
{
    const auto found = owned(xcb_intern_atom_reply(m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(std::strlen(name)), name), nullptr));
    return found ? found->atom : xcb_atom_t(XCB_ATOM_NONE);
}

std::vector<uint32_t> ServerView::numbers(xcb_window_t window, const char *property)
{
    const auto found = owned(xcb_get_property_reply(m_connection,
        xcb_get_property(m_connection, 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096),
        nullptr));
    if (!found || found->format != 32)
        return {};
    const auto *first = static_cast<const uint32_t *>(xcb_get_property_value(found.get()));
    return {
        first, first + static_cast<size_t>(xcb_get_property_value_length(found.get())) / sizeof(uint32_t)};
}

QRect ServerView::clientRectangle(xcb_window_t window)
{
    const auto size
        = owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    const auto at = owned(xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, window, m_root, 0, 0), nullptr));
    return size && at ? QRect(at->dst_x, at->dst_y, size->width, size->height) : QRect();
}

xcb_window_t ServerView::frameOf(xcb_window_t window)
{
    for (;;) {
        const auto tree
            = owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
        if (!tree)
            return XCB_NONE;
        if (tree->parent == m_root || tree->parent == XCB_NONE)
            return window;
        window = tree->parent;
    }
}

QRect ServerView::frameRectangle(xcb_window_t window)
{
    const auto frame = owned(
        xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, frameOf(window)), nullptr));
    if (!frame)
        return {};
    return {
        frame->x, frame->y, frame->width + 2 * frame->border_width, frame->height + 2 * frame->border_width};
}

bool ServerView::exists(xcb_window_t window)
{
    return owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr))
        != nullptr;
}

bool ServerView::isViewable(xcb_window_t window)
{
    const auto found = owned(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
    return found && found->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool ServerView::isActive(xcb_window_t window)
{
    const std::vector<uint32_t> active = numbers(m_root, "_NET_ACTIVE_WINDOW");
    return !active.empty() && active.front() == window;
}

bool ServerView::isListed(xcb_window_t window)
{
    return std::ranges::count(numbers(m_root, "_NET_CLIENT_LIST"), window) > 0;
}

bool ServerView::hasState(xcb_window_t window, const char *name)
{
    return std::ranges::count(numbers(window, "_NET_WM_STATE"), atom(name)) > 0;
}

bool ServerView::isComposited()
{
    const auto owner = owned(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, atom("_NET_WM_CM_S0")), nullptr));
    return owner && owner->owner != XCB_NONE;
}

xcb_window_t ServerView::windowTitled(const QByteArray &title, xcb_window_t otherThan)
{
    for (const xcb_window_t window : numbers(m_root, "_NET_CLIENT_LIST")) {
        if (window != otherThan && titleOf(window) == title)
            return window;
    }
    return XCB_NONE;
}

QByteArray ServerView::titleOf(xcb_window_t window)
{
    // Old programs have a name of the old kind alone.
    for (const char *property : {"_NET_WM_NAME", "WM_NAME"}) {
        const auto found = owned(xcb_get_property_reply(m_connection,
            xcb_get_property(m_connection, 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 256),
            nullptr));
        if (found && xcb_get_property_value_length(found.get()) > 0)
            return {static_cast<const char *>(xcb_get_property_value(found.get())),
                xcb_get_property_value_length(found.get())};
    }
    return {};
}

bool ServerView::hasWindowNamed(const QByteArray &title)
{
    if (windowTitled(title) != XCB_NONE)
        return true;
    const auto tree
        = owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    if (!tree)
        return false;
    const xcb_window_t *first = xcb_query_tree_children(tree.get());
    return std::any_of(first, first + xcb_query_tree_children_length(tree.get()),
        [&](xcb_window_t window) { return titleOf(window) == title; });
}

bool ServerView::hasKeyboard(xcb_window_t window)
{
    const auto focus
        = owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return focus && focus->focus == window;
}

QByteArray ServerView::classWithKeyboard()
{
    const std::vector<uint32_t> active = numbers(m_root, "_NET_ACTIVE_WINDOW");
    const auto focus
        = owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    if (active.empty() || !focus || focus->focus == m_root
        || frameOf(focus->focus) != frameOf(active.front()))
        return {};
    const auto found = owned(xcb_get_property_reply(m_connection,
        xcb_get_property(m_connection, 0, active.front(), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
        nullptr));
    // Two texts, each with a NUL at its end: the program's name and its class.
    const QByteArray both(found ? static_cast<const char *>(xcb_get_property_value(found.get())) : nullptr,
        found ? xcb_get_property_value_length(found.get()) : 0);
    return both.split('\0').value(1);
}

bool ServerView::isAbove(xcb_window_t upper, xcb_window_t lower)
{
    const auto tree
        = owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    if (!tree)
        return false;
    const xcb_window_t *first = xcb_query_tree_children(tree.get());
    const xcb_window_t *last = first + xcb_query_tree_children_length(tree.get());
    return std::find(first, last, frameOf(lower)) < std::find(first, last, frameOf(upper));
}

void ServerView::map(xcb_window_t window)
{
    xcb_map_window(m_connection, window);
    xcb_flush(m_connection);
}

void ServerView::activate(xcb_window_t window)
{
    constexpr uint32_t fromUser = 2;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("_NET_ACTIVE_WINDOW");
    event.data.data32[0] = fromUser;
    xcb_send_event(m_connection, 0, m_root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
    xcb_flush(m_connection);
}

uint32_t ServerView::pixel(QPoint point)
{
    const auto image = owned(xcb_get_image_reply(m_connection,
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, static_cast<int16_t>(point.x()),
            static_cast<int16_t>(point.y()), 1, 1, ~uint32_t(0)),
        nullptr));
    return image && image->length > 0
        ? *reinterpret_cast<const uint32_t *>(xcb_get_image_data(image.get())) & 0xffffff
        : 0;
}

QPoint ServerView::pointer()
{
    const auto at
        = owned(xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr));
    return at ? QPoint(at->root_x, at->root_y) : QPoint();
}

bool ServerView::anyButtonDown()
{
    const auto at
        = owned(xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr));
    return at && (at->mask & (XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3)) != 0;
}

std::vector<int> ServerView::keysDown()
{
    std::vector<int> keys;
    const auto state = owned(xcb_query_keymap_reply(m_connection, xcb_query_keymap(m_connection), nullptr));
    for (int key = 0; state && key < 256; ++key) {
        if (state->keys[key / 8] & 1 << key % 8)
            keys.push_back(key);
    }
    return keys;
}

xcb_keycode_t ServerView::keyOf(char letter)
{
    const std::vector<xcb_keysym_t> symbols = keyboardMap();
    const auto place = std::ranges::find(symbols, static_cast<xcb_keysym_t>(letter));
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    const auto keys = static_cast<size_t>(setup->max_keycode - setup->min_keycode + 1);
    const size_t symbolsPerKey = symbols.size() / keys;
    return static_cast<xcb_keycode_t>(
        setup->min_keycode + static_cast<size_t>(place - symbols.begin()) / symbolsPerKey);
}

bool ServerView::takeKey(char letter, uint16_t modifiers)
{
    return owned(xcb_request_check(m_connection,
               xcb_grab_key_checked(m_connection, 0, m_root, modifiers, keyOf(letter), XCB_GRAB_MODE_ASYNC,
                   XCB_GRAB_MODE_ASYNC)))
        == nullptr;
}

bool ServerView::isKeyTaken(char letter, uint16_t modifiers)
{
    const xcb_keycode_t key = keyOf(letter);
    // Nobody else may find the key taken by this look.
    xcb_grab_server(m_connection);
    const xcb_void_cookie_t trial = xcb_grab_key_checked(
        m_connection, 0, m_root, modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(m_connection, key, m_root, modifiers);
    xcb_ungrab_server(m_connection);
    return owned(xcb_request_check(m_connection, trial)) != nullptr;
}

bool ServerView::isKeyboardFree()
{
    const auto trial = owned(xcb_grab_keyboard_reply(m_connection,
        xcb_grab_keyboard(
            m_connection, 0, m_root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
    xcb_flush(m_connection);
    return trial && trial->status == XCB_GRAB_STATUS_SUCCESS;
}

std::vector<xcb_keysym_t> ServerView::keyboardMap()
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    const auto map = owned(xcb_get_keyboard_mapping_reply(m_connection,
        xcb_get_keyboard_mapping(m_connection, setup->min_keycode,
            static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1)),
        nullptr));
    if (!map)
        return {};
    const xcb_keysym_t *first = xcb_get_keyboard_mapping_keysyms(map.get());
    return {first, first + xcb_get_keyboard_mapping_keysyms_length(map.get())};
}

int ServerView::layoutGroup()
{
    const auto state = owned(xcb_xkb_get_state_reply(
        m_connection, xcb_xkb_get_state(m_connection, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? state->group : -1;
}

void ServerView::lockLayoutGroup(int group)
{
    xcb_xkb_latch_lock_state(
        m_connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, static_cast<uint8_t>(group), 0, 0, 0);
    xcb_flush(m_connection);
}

} // namespace plum
