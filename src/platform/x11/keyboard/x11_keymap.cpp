#include "platform/x11/keyboard/x11_keymap.h"

#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/keyboard/xcb_xkb.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string_view>

#include <xkbcommon/xkbcommon-x11.h>

namespace plum {

namespace {

// XKB names a key by its row and its place in it, whatever is printed on it.
struct LetterRow
{
    const char *keys;
    std::string_view letters;
};

constexpr std::array usRows{
    LetterRow{"AD", "qwertyuiop"}, LetterRow{"AC", "asdfghjkl"}, LetterRow{"AB", "zxcvbnm"}};

} // namespace

X11Keymap::X11Keymap(X11Connection &connection)
    : m_connection(connection)
    , m_ownKeys(connection)
    , m_context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), &xkb_context_unref)
    , m_keymap(nullptr, &xkb_keymap_unref)
{
    if (!m_connection.isOpen()
        || !xkb_x11_setup_xkb_extension(m_connection.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION,
            XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
            &m_firstEvent, nullptr))
        return;
    m_device = xkb_x11_get_core_keyboard_device_id(m_connection.xcb());

    constexpr uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY
        | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr uint16_t allParts = 0xff;
    xcb_xkb_select_events(
        m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, allParts, allParts, nullptr);
    m_connection.addReceiver([this](const xcb_generic_event_t &event) { receive(event); });
}

void X11Keymap::receive(const xcb_generic_event_t &event)
{
    constexpr uint8_t sentBit = 0x80;
    if (m_firstEvent == 0 || (event.response_type & ~sentBit) != m_firstEvent)
        return;
    // Every XKB event has the same first type; its second byte tells them apart.
    switch (event.pad0) {
    case XCB_XKB_STATE_NOTIFY: {
        const auto &state = reinterpret_cast<const xcb_xkb_state_notify_event_t &>(event);
        if (state.group != m_group || state.lockedMods != m_lockedModifiers)
            m_strokes.clear();
        m_group = state.group;
        m_lockedModifiers = state.lockedMods;
        if (state.changed & XCB_XKB_STATE_PART_GROUP_STATE)
            m_changed();
        break;
    }
    case XCB_XKB_MAP_NOTIFY:
        if (!m_ownKeys.made(event)) {
            m_stale = true;
            m_changed();
        }
        break;
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
        m_stale = true;
        m_changed();
        break;
    default:
        break;
    }
}

void X11Keymap::load()
{
    m_stale = false;
    m_strokes.clear();
    m_keymap.reset(xkb_x11_keymap_new_from_device(
        m_context.get(), m_connection.xcb(), m_device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!m_keymap)
        return;
    const std::unique_ptr<xkb_state, decltype(&xkb_state_unref)> state(
        xkb_x11_state_new_from_device(m_keymap.get(), m_connection.xcb(), m_device), &xkb_state_unref);
    if (state) {
        m_group = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
        m_lockedModifiers
            = static_cast<uint8_t>(xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_LOCKED));
    }
    readModifierKeys();
    m_ownKeys.follow(*m_keymap);
}

void X11Keymap::readModifierKeys()
{
    m_modifierKeys = {};
    const auto found = m_connection.reply(xcb_get_modifier_mapping_reply, xcb_get_modifier_mapping);
    if (!found)
        return;
    const xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(found.get());
    const int perModifier = found->keycodes_per_modifier;
    for (int i = 0; i < xcb_get_modifier_mapping_keycodes_length(found.get()); ++i) {
        xcb_keycode_t &key = m_modifierKeys[static_cast<size_t>(i / perModifier)];
        if (key == 0)
            key = keys[i];
    }
}

bool X11Keymap::refresh()
{
    if (m_device < 0)
        return false;
    m_connection.dispatchArrived();
    if (m_stale)
        load();
    return m_keymap != nullptr;
}

std::optional<xcb_keycode_t> X11Keymap::keyFor(xkb_keysym_t symbol)
{
    if (!refresh())
        return {};
    if (const auto key = findInActiveGroup(symbol))
        return key;
    return m_ownKeys.hold(symbol, unusedKeys());
}

std::vector<X11Keymap::Stroke> X11Keymap::strokesFor(std::span<const xkb_keysym_t> symbols)
{
    std::vector<Stroke> strokes;
    if (!refresh())
        return strokes;
    // Waiting for a key to become free may bring the news of another layout.
    do {
        std::vector<xkb_keysym_t> lacking;
        std::ranges::copy_if(
            symbols, std::back_inserter(lacking), [this](auto symbol) { return !layoutStroke(symbol); });
        m_ownKeys.give(lacking, unusedKeys());
    } while (m_stale && refresh());

    for (const xkb_keysym_t symbol : symbols) {
        auto stroke = layoutStroke(symbol);
        if (!stroke)
            stroke = ownStroke(symbol);
        if (!stroke)
            break;
        strokes.push_back(std::move(*stroke));
    }
    return strokes;
}

const std::optional<X11Keymap::Stroke> &X11Keymap::layoutStroke(xkb_keysym_t symbol)
{
    const auto known = m_strokes.find(symbol);
    return known != m_strokes.end() ? known->second
                                    : m_strokes.emplace(symbol, findStroke(symbol)).first->second;
}

// Both cases of a letter share a key. What Caps Lock does to such a key, Shift takes back.
std::optional<X11Keymap::Stroke> X11Keymap::ownStroke(xkb_keysym_t symbol) const
{
    const auto place = m_ownKeys.placeOf(symbol);
    if (!place)
        return {};
    const bool isCapsLock = (m_lockedModifiers & XCB_MOD_MASK_LOCK) != 0;
    auto modifiers
        = modifierKeys(place->withShift != (place->isLetter && isCapsLock) ? XCB_MOD_MASK_SHIFT : 0);
    return modifiers ? std::optional(Stroke{place->key, std::move(*modifiers)}) : std::nullopt;
}

std::vector<xcb_keycode_t> X11Keymap::unusedKeys() const
{
    std::vector<xcb_keycode_t> keys;
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(m_keymap.get()), 255);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        const auto candidate = static_cast<xcb_keycode_t>(key);
        if (xkb_keymap_num_layouts_for_key(m_keymap.get(), key) == 0 && !m_ownKeys.has(candidate))
            keys.push_back(candidate);
    }
    return keys;
}

std::optional<X11Keymap::Stroke> X11Keymap::findStroke(xkb_keysym_t symbol) const
{
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(m_keymap.get()), 255);
    std::optional<Stroke> best;
    for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(m_keymap.get(), key);
        if (groups == 0 || m_ownKeys.has(static_cast<xcb_keycode_t>(key)))
            continue;
        const xkb_layout_index_t group = m_group % groups;
        for (xkb_level_index_t level = 0; level < xkb_keymap_num_levels_for_key(m_keymap.get(), key, group);
             ++level) {
            const xkb_keysym_t *symbols = nullptr;
            if (xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, group, level, &symbols) != 1
                || symbols[0] != symbol)
                continue;
            auto stroke = strokeAt(key, group, level);
            if (stroke && (!best || stroke->modifiers.size() < best->modifiers.size()))
                best = std::move(stroke);
        }
    }
    return best;
}

std::optional<X11Keymap::Stroke> X11Keymap::strokeAt(
    xkb_keycode_t key, xkb_layout_index_t group, xkb_level_index_t level) const
{
    std::array<xkb_mod_mask_t, 32> masks{};
    const auto masksOf = [&](xkb_level_index_t of) {
        return std::span(masks).first(
            xkb_keymap_key_get_mods_for_level(m_keymap.get(), key, group, of, masks.data(), masks.size()));
    };
    // A locked modifier counts only for keys to which it makes a difference.
    xkb_mod_mask_t different = 0;
    for (xkb_level_index_t of = 0; of < xkb_keymap_num_levels_for_key(m_keymap.get(), key, group); ++of) {
        for (const xkb_mod_mask_t mask : masksOf(of))
            different |= mask;
    }
    const xkb_mod_mask_t locked = m_lockedModifiers & different;

    std::optional<Stroke> best;
    for (const xkb_mod_mask_t mask : masksOf(level)) {
        if ((mask & locked) != locked)
            continue;
        auto modifiers = modifierKeys(static_cast<uint8_t>(mask & ~locked & 0xffU));
        if (modifiers && (!best || modifiers->size() < best->modifiers.size()))
            best = Stroke{static_cast<xcb_keycode_t>(key), std::move(*modifiers)};
    }
    return best;
}

// Nothing where a modifier has no key, and for Caps Lock, which a press would switch.
std::optional<std::vector<xcb_keycode_t>> X11Keymap::modifierKeys(uint8_t mask) const
{
    if ((mask & XCB_MOD_MASK_LOCK) != 0)
        return {};
    std::vector<xcb_keycode_t> keys;
    for (size_t bit = 0; bit < m_modifierKeys.size(); ++bit) {
        if ((mask >> bit & 1U) == 0)
            continue;
        if (m_modifierKeys[bit] == 0)
            return {};
        keys.push_back(m_modifierKeys[bit]);
    }
    return keys;
}

std::optional<xcb_keycode_t> X11Keymap::findInActiveGroup(xkb_keysym_t symbol) const
{
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(m_keymap.get()), 255);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(m_keymap.get(), key);
        if (groups == 0 || m_ownKeys.has(static_cast<xcb_keycode_t>(key)))
            continue;
        // A key with fewer groups than the layout has wraps around.
        const xkb_keysym_t *symbols = nullptr;
        const int count
            = xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, m_group % groups, 0, &symbols);
        if (count == 1 && symbols[0] == symbol)
            return static_cast<xcb_keycode_t>(key);
    }
    return {};
}

std::optional<xcb_keycode_t> X11Keymap::findInAnyGroup(xkb_keysym_t symbol) const
{
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(m_keymap.get()), 255);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        const auto candidate = static_cast<xcb_keycode_t>(key);
        if (!m_ownKeys.has(candidate) && keyHas(candidate, symbol))
            return candidate;
    }
    return {};
}

bool X11Keymap::keyHas(xcb_keycode_t key, xkb_keysym_t symbol) const
{
    for (xkb_layout_index_t group = 0; group < xkb_keymap_num_layouts_for_key(m_keymap.get(), key); ++group) {
        const xkb_keysym_t *symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, group, 0, &symbols) == 1
            && symbols[0] == symbol)
            return true;
    }
    return false;
}

std::optional<xcb_keycode_t> X11Keymap::existingKeyFor(char letter)
{
    if (!refresh())
        return {};
    const xkb_keysym_t symbol = XKB_KEY_a + static_cast<xkb_keysym_t>(letter - 'a');
    if (const auto key = findInActiveGroup(symbol))
        return key;
    if (const auto key = findInAnyGroup(symbol))
        return key;
    for (const LetterRow &row : usRows) {
        if (const size_t column = row.letters.find(letter); column != std::string_view::npos) {
            std::array<char, 5> name{};
            std::snprintf(
                name.data(), name.size(), "%s%02u", row.keys, static_cast<unsigned>(column + 1) % 100U);
            const xkb_keycode_t key = xkb_keymap_key_by_name(m_keymap.get(), name.data());
            if (key <= 255)
                return static_cast<xcb_keycode_t>(key);
        }
    }
    return {};
}

uint16_t X11Keymap::modifierWith(xkb_keysym_t symbol)
{
    const auto found = m_connection.reply(xcb_get_modifier_mapping_reply, xcb_get_modifier_mapping);
    if (!found || !refresh())
        return 0;
    const xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(found.get());
    const int count = xcb_get_modifier_mapping_keycodes_length(found.get());
    for (int i = 0; i < count; ++i) {
        if (keys[i] != 0 && keyHas(keys[i], symbol))
            return static_cast<uint16_t>(1U << (i / found->keycodes_per_modifier));
    }
    return 0;
}

void X11Keymap::removeOwnKeys()
{
    if (m_connection.isOpen())
        m_ownKeys.takeBack();
}

} // namespace plum
