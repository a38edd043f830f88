#pragma once

#include "platform/x11/keyboard/x11_receiver.h"

#include <QtGlobal>

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
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

    // How `symbol` is typed in the active group, as Caps Lock stands now. A symbol that the group has at no
    // level gets a key as in keyFor(); its stroke has to end with noLongerHeld().
    std::optional<Stroke> strokeFor(xkb_keysym_t symbol);

    // The key that gives `letter` ('a' to 'z') without Shift, among those that the keyboard has: in the
    // active group, else in another one, else the key in that letter's place on a US keyboard. Changes
    // nothing.
    std::optional<xcb_keycode_t> existingKeyFor(char letter);

    // The bit of the modifier that has a key with `symbol`; 0 for none.
    uint16_t modifierWith(xkb_keysym_t symbol);

    // Called when the keyboard's map or its active group has changed, not by a key of keyFor().
    void onChange(std::function<void()> changed) { m_changed = std::move(changed); }

    // Makes `key` free for another symbol; a key of the layout stays as it is.
    void noLongerHeld(xcb_keycode_t key);

    // Takes back every key that keyFor() made. Programs read the map some time after an event that needs
    // it, so this waits until the last such event is a moment old.
    void removeOwnKeys();

private:
    // A key that the layout does not use, bound to a symbol by us.
    struct OwnKey
    {
        xcb_keycode_t key;
        xkb_keysym_t symbol;
        bool held;
        qint64 lastUse; // milliseconds of the monotonic clock
    };

    void receive(const xcb_generic_event_t &event);
    bool refresh();
    void load();
    std::optional<xcb_keycode_t> findInActiveGroup(xkb_keysym_t symbol) const;
    std::optional<xcb_keycode_t> findInAnyGroup(xkb_keysym_t symbol) const;
    bool keyHas(xcb_keycode_t key, xkb_keysym_t symbol) const;
    std::optional<xcb_keycode_t> bindOwnKey(xkb_keysym_t symbol);
    std::optional<Stroke> findStroke(xkb_keysym_t symbol) const;
    std::optional<Stroke> strokeAt(
        xkb_keycode_t key, xkb_layout_index_t group, xkb_level_index_t level) const;
    std::optional<std::vector<xcb_keycode_t>> modifierKeys(uint8_t mask) const;
    void readModifierKeys();
    void waitUntilSettled(qint64 lastUse);
    void bind(xcb_keycode_t key, xkb_keysym_t symbol);
    bool isOwn(xcb_keycode_t key) const;

    X11Connection &m_connection;
    X11Receiver m_receiver;
    qint64 m_settledUntil = 0; // every use before is known to be over
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
    std::unordered_map<xkb_keysym_t, Stroke> m_strokes; // of the layout as it is, those that were asked for
    std::deque<OwnKey> m_ownKeys; // the longest unused one first
};

} // namespace plum
