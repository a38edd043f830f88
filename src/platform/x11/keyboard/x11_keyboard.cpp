#include "platform/x11/keyboard/x11_keyboard.h"

#include "platform/x11/connection/x11_connection.h"

#include <algorithm>
#include <xcb/xtest.h>

namespace plum {

namespace {

struct Symbol
{
    quint8 virtualKey;
    xkb_keysym_t symbol;
};

constexpr std::array symbols{
    Symbol{8, XKB_KEY_BackSpace},
    Symbol{9, XKB_KEY_Tab},
    Symbol{13, XKB_KEY_Return},
    Symbol{16, XKB_KEY_Shift_L},
    Symbol{17, XKB_KEY_Control_L},
    Symbol{18, XKB_KEY_Alt_L},
    Symbol{19, XKB_KEY_Pause},
    Symbol{20, XKB_KEY_Caps_Lock},
    Symbol{27, XKB_KEY_Escape},
    Symbol{32, XKB_KEY_space},
    Symbol{33, XKB_KEY_Prior},
    Symbol{34, XKB_KEY_Next},
    Symbol{35, XKB_KEY_End},
    Symbol{36, XKB_KEY_Home},
    Symbol{37, XKB_KEY_Left},
    Symbol{38, XKB_KEY_Up},
    Symbol{39, XKB_KEY_Right},
    Symbol{40, XKB_KEY_Down},
    Symbol{44, XKB_KEY_Print},
    Symbol{45, XKB_KEY_Insert},
    Symbol{46, XKB_KEY_Delete},
    Symbol{91, XKB_KEY_Super_L},
    Symbol{92, XKB_KEY_Super_R},
    Symbol{93, XKB_KEY_Menu},
};

xkb_keysym_t symbolOf(quint8 virtualKey)
{
    if (virtualKey >= 'A' && virtualKey <= 'Z')
        return XKB_KEY_a + (virtualKey - 'A');
    if (virtualKey >= '0' && virtualKey <= '9')
        return XKB_KEY_0 + (virtualKey - '0');
    constexpr quint8 f1 = 112;
    constexpr quint8 f24 = 135;
    if (virtualKey >= f1 && virtualKey <= f24)
        return XKB_KEY_F1 + (virtualKey - f1);
    const auto found = std::ranges::find(symbols, virtualKey, &Symbol::virtualKey);
    return found == symbols.end() ? XKB_KEY_NoSymbol : found->symbol;
}

} // namespace

X11Keyboard::X11Keyboard(X11Connection &connection, X11Keymap &keymap)
    : m_connection(connection)
    , m_keymap(keymap)
{
}

void X11Keyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    if (!m_connection.isOpen())
        return;
    if (flags & KeyUp)
        release(virtualKey);
    else
        press(virtualKey);
    m_connection.flush();
}

void X11Keyboard::press(quint8 virtualKey)
{
    const xkb_keysym_t symbol = symbolOf(virtualKey);
    if (symbol == XKB_KEY_NoSymbol)
        return;
    const auto key = m_keymap.keyFor(symbol);
    if (!key)
        return;
    m_down[virtualKey] = *key;
    xcb_test_fake_input(
        m_connection.xcb(), XCB_KEY_PRESS, *key, XCB_CURRENT_TIME, m_connection.root(), 0, 0, 0);
}

// A key that this object did not press is released all the same: the user or another program may hold it.
void X11Keyboard::release(quint8 virtualKey)
{
    xcb_keycode_t key = std::exchange(m_down[virtualKey], xcb_keycode_t(0));
    if (key == 0) {
        const xkb_keysym_t symbol = symbolOf(virtualKey);
        if (symbol == XKB_KEY_NoSymbol)
            return;
        key = m_keymap.keyFor(symbol).value_or(xcb_keycode_t(0));
    }
    if (key == 0)
        return;
    xcb_test_fake_input(
        m_connection.xcb(), XCB_KEY_RELEASE, key, XCB_CURRENT_TIME, m_connection.root(), 0, 0, 0);
    m_keymap.noLongerHeld(key);
}

void X11Keyboard::releaseAll()
{
    for (int virtualKey = 0; virtualKey < static_cast<int>(m_down.size()); ++virtualKey) {
        if (m_down[static_cast<size_t>(virtualKey)] != 0)
            keyEvent(static_cast<quint8>(virtualKey), KeyUp);
    }
    m_keymap.removeOwnKeys();
}

} // namespace plum
