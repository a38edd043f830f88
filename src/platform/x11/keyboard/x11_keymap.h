#pragma once

#include "platform/x11/keyboard/x11_own_keys.h"

#include <QtGlobal>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

namespace plum {

class X11Connection;

// The keyboard layout in force: which key gives a symbol in the group that is active right now, and keys of
// our own for the symbols that it lacks.
class X11Keymap
{
public:
    explicit X11Keymap(X11Connection &connection);

    // The key that gives `symbol` without Shift. A symbol that the active group lacks gets a key that the
    // layout does not use; nothing only when there is no such key either.
    std::optional<xcb_keycode_t> keyFor(xkb_keysym_t symbol);

    // A key, and the modifier keys that have to be down before it, in this order.
    struct Stroke
    {
        xcb_keycode_t key;
        std::vector<xcb_keycode_t> modifiers;
    };

    // How `symbols` are typed in the active group, one after the other, as Caps Lock stands now. Symbols that
    // the group has at no level get keys that the layout does not use; where these are too few, the strokes
    // end before the first symbol that found none, and the rest is asked for when these have been sent.
    std::vector<Stroke> strokesFor(std::span<const xkb_keysym_t> symbols);

    // The key that gives `letter` ('a' to 'z') without Shift, among those that the keyboard has: in the
    // active group, else in another one, else the key in that letter's place on a US keyboard. Changes
    // nothing.
    std::optional<xcb_keycode_t> existingKeyFor(char letter);

    // The bit of the modifier that has a key with `symbol`; 0 for none.
    uint16_t modifierWith(xkb_keysym_t symbol);

    // Called when the keyboard's map or its active group has changed, not by a key of our own.
    void onChange(std::function<void()> changed) { m_changed = std::move(changed); }

    // Makes `key`, which keyFor() gave, free for another symbol; a key of the layout stays as it is.
    void noLongerHeld(xcb_keycode_t key) { m_ownKeys.letGo(key); }

    // See `Keyboard`.
    void setStop(const StopSignal *stop) { m_ownKeys.setStop(stop); }

    // Takes back every key of our own.
    void removeOwnKeys();

private:
    void receive(const xcb_generic_event_t &event);
    bool refresh();
    void load();
    std::optional<xcb_keycode_t> findInActiveGroup(xkb_keysym_t symbol) const;
    std::optional<xcb_keycode_t> findInAnyGroup(xkb_keysym_t symbol) const;
    bool keyHas(xcb_keycode_t key, xkb_keysym_t symbol) const;
    std::vector<xcb_keycode_t> unusedKeys() const;
    const std::optional<Stroke> &layoutStroke(xkb_keysym_t symbol);
    std::optional<Stroke> ownStroke(xkb_keysym_t symbol) const;
    std::optional<Stroke> findStroke(xkb_keysym_t symbol) const;
    std::optional<Stroke> strokeAt(
        xkb_keycode_t key, xkb_layout_index_t group, xkb_level_index_t level) const;
    std::optional<std::vector<xcb_keycode_t>> modifierKeys(uint8_t mask) const;
    void readModifierKeys();

    X11Connection &m_connection;
    X11OwnKeys m_ownKeys;
    std::function<void()> m_changed = [] {};
    quint8 m_firstEvent = 0;
    qint32 m_device = -1;
    std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> m_context;
    std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> m_keymap;
    bool m_stale = true;
    xkb_layout_index_t m_group = 0;
    uint8_t m_lockedModifiers = 0;
    std::array<xcb_keycode_t, 8>
        m_modifierKeys{}; // one for each modifier bit; 0 for a modifier without a key
    // Of the layout as it is, those that were asked for; nothing for a symbol that it lacks.
    std::unordered_map<xkb_keysym_t, std::optional<Stroke>> m_strokes;
};

} // namespace plum
