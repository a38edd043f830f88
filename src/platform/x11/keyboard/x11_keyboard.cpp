#include "platform/x11/keyboard/x11_keyboard.h"

#include "platform/typed_text.h"
#include "platform/x11/connection/x11_connection.h"

#include <algorithm>
#include <ranges>
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
    Symbol{95, XKB_KEY_XF86Sleep},
    Symbol{106, XKB_KEY_KP_Multiply},
    Symbol{107, XKB_KEY_KP_Add},
    Symbol{109, XKB_KEY_KP_Subtract},
    Symbol{110, XKB_KEY_KP_Decimal},
    Symbol{111, XKB_KEY_KP_Divide},
    Symbol{144, XKB_KEY_Num_Lock},
    Symbol{145, XKB_KEY_Scroll_Lock},
    Symbol{160, XKB_KEY_Shift_L},
    Symbol{161, XKB_KEY_Shift_R},
    Symbol{162, XKB_KEY_Control_L},
    Symbol{163, XKB_KEY_Control_R},
    Symbol{164, XKB_KEY_Alt_L},
    Symbol{165, XKB_KEY_Alt_R},
    Symbol{166, XKB_KEY_XF86Back},
    Symbol{167, XKB_KEY_XF86Forward},
    Symbol{168, XKB_KEY_XF86Refresh},
    Symbol{172, XKB_KEY_XF86HomePage},
    Symbol{173, XKB_KEY_XF86AudioMute},
    Symbol{174, XKB_KEY_XF86AudioLowerVolume},
    Symbol{175, XKB_KEY_XF86AudioRaiseVolume},
    Symbol{176, XKB_KEY_XF86AudioNext},
    Symbol{177, XKB_KEY_XF86AudioPrev},
    Symbol{178, XKB_KEY_XF86AudioStop},
    Symbol{179, XKB_KEY_XF86AudioPlay},
    Symbol{180, XKB_KEY_XF86Mail},
    // Punctuation, by the character that the key has on a US keyboard.
    Symbol{186, XKB_KEY_semicolon},
    Symbol{187, XKB_KEY_equal},
    Symbol{188, XKB_KEY_comma},
    Symbol{189, XKB_KEY_minus},
    Symbol{190, XKB_KEY_period},
    Symbol{191, XKB_KEY_slash},
    Symbol{192, XKB_KEY_grave},
    Symbol{219, XKB_KEY_bracketleft},
    Symbol{220, XKB_KEY_backslash},
    Symbol{221, XKB_KEY_bracketright},
    Symbol{222, XKB_KEY_apostrophe},
};

xkb_keysym_t symbolOf(quint8 virtualKey)
{
    if (virtualKey >= 'A' && virtualKey <= 'Z')
        return XKB_KEY_a + (virtualKey - 'A');
    if (virtualKey >= '0' && virtualKey <= '9')
        return XKB_KEY_0 + (virtualKey - '0');
    constexpr quint8 pad0 = 96;
    if (virtualKey >= pad0 && virtualKey <= pad0 + 9)
        return XKB_KEY_KP_0 + (virtualKey - pad0);
    constexpr quint8 f1 = 112;
    constexpr quint8 f24 = 135;
    if (virtualKey >= f1 && virtualKey <= f24)
        return XKB_KEY_F1 + (virtualKey - f1);
    const auto found = std::ranges::find(symbols, virtualKey, &Symbol::virtualKey);
    return found == symbols.end() ? XKB_KEY_NoSymbol : found->symbol;
}

xkb_keysym_t symbolOfCharacter(char32_t character)
{
    if (character == U'\n')
        return XKB_KEY_Return;
    if (character == U'\t')
        return XKB_KEY_Tab;
    return xkb_utf32_to_keysym(character);
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
    m_connection.sync();
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
    fake(XCB_KEY_PRESS, *key);
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
    fake(XCB_KEY_RELEASE, key);
    m_keymap.noLongerHeld(key);
}

void X11Keyboard::fake(quint8 type, xcb_keycode_t key)
{
    xcb_test_fake_input(m_connection.xcb(), type, key, XCB_CURRENT_TIME, m_connection.root(), 0, 0, 0);
}

bool X11Keyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    if (!m_connection.isOpen())
        return false;
    const TypedText wanted = charactersOf(text);
    std::vector<xkb_keysym_t> symbols;
    std::ranges::transform(wanted.characters, std::back_inserter(symbols), symbolOfCharacter);
    for (std::span<const xkb_keysym_t> left = symbols; !left.empty();) {
        const std::vector<X11Keymap::Stroke> strokes = m_keymap.strokesFor(left);
        if (strokes.empty())
            return false;
        for (const X11Keymap::Stroke &stroke : strokes) {
            before();
            send(stroke);
            m_connection.sync();
        }
        left = left.subspan(strokes.size());
    }
    return wanted.isWhole;
}

void X11Keyboard::send(const X11Keymap::Stroke &stroke)
{
    for (const xcb_keycode_t modifier : stroke.modifiers)
        fake(XCB_KEY_PRESS, modifier);
    fake(XCB_KEY_PRESS, stroke.key);
    fake(XCB_KEY_RELEASE, stroke.key);
    for (const xcb_keycode_t modifier : stroke.modifiers | std::views::reverse)
        fake(XCB_KEY_RELEASE, modifier);
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
