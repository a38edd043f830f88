#pragma once

#include "platform/global_hotkey.h"

#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace plum {

class X11Connection;
class X11Keymap;

// A key of the root window that is grabbed for this program, whatever locks are on. It follows the keyboard
// layout: the letter stays, its key may become another one.
class X11Hotkey final : public GlobalHotkey
{
    Q_OBJECT

public:
    X11Hotkey(X11Connection &connection, X11Keymap &keymap);

    bool registerHotkey(quint32 modifiers, quint32 virtualKey) override;
    void unregisterHotkey() override;

private:
    struct Combination
    {
        quint32 modifiers;
        quint32 virtualKey;
    };

    // What the server calls a combination.
    struct Grab
    {
        xcb_keycode_t key = 0; // 0 for none
        uint16_t modifiers = 0;
        std::vector<uint16_t> locks; // every mixture of locks, none of them included

        bool operator==(const Grab &) const = default;
    };

    std::optional<Grab> find(const Combination &combination);
    bool take(const Grab &grab);
    void letGo();
    void follow();
    void receive(const xcb_generic_event_t &event);
    void receivePress(const xcb_key_press_event_t &press);

    X11Connection &m_connection;
    X11Keymap &m_keymap;
    std::optional<Combination> m_wanted;
    Grab m_held;
    bool m_isDown = false;
    bool m_mustFollow = false; // the keyboard has changed and follow() is on its way
};

} // namespace plum
