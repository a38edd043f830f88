#include "platform/wayland/wire/key_table.h"

#include <algorithm>
#include <array>

namespace plum {

namespace {

// By the numbers of Windows.
constexpr std::array keys{
    TableKey{8, 14, "BackSpace"},
    TableKey{9, 15, "Tab, ISO_Left_Tab"},
    TableKey{13, 28, "Return"},
    TableKey{16, 42, "Shift_L"},
    TableKey{17, 29, "Control_L"},
    TableKey{18, 56, "Alt_L"},
    TableKey{19, 119, "Pause"},
    TableKey{20, 58, "Caps_Lock"},
    TableKey{27, 1, "Escape"},
    TableKey{32, 57, "space"},
    TableKey{33, 104, "Prior"},
    TableKey{34, 109, "Next"},
    TableKey{35, 107, "End"},
    TableKey{36, 102, "Home"},
    TableKey{37, 105, "Left"},
    TableKey{38, 103, "Up"},
    TableKey{39, 106, "Right"},
    TableKey{40, 108, "Down"},
    TableKey{44, 99, "Print"},
    TableKey{45, 110, "Insert"},
    TableKey{46, 111, "Delete"},
    TableKey{48, 11, "0, parenright"},
    TableKey{49, 2, "1, exclam"},
    TableKey{50, 3, "2, at"},
    TableKey{51, 4, "3, numbersign"},
    TableKey{52, 5, "4, dollar"},
    TableKey{53, 6, "5, percent"},
    TableKey{54, 7, "6, asciicircum"},
    TableKey{55, 8, "7, ampersand"},
    TableKey{56, 9, "8, asterisk"},
    TableKey{57, 10, "9, parenleft"},
    TableKey{65, 30, "a, A"},
    TableKey{66, 48, "b, B"},
    TableKey{67, 46, "c, C"},
    TableKey{68, 32, "d, D"},
    TableKey{69, 18, "e, E"},
    TableKey{70, 33, "f, F"},
    TableKey{71, 34, "g, G"},
    TableKey{72, 35, "h, H"},
    TableKey{73, 23, "i, I"},
    TableKey{74, 36, "j, J"},
    TableKey{75, 37, "k, K"},
    TableKey{76, 38, "l, L"},
    TableKey{77, 50, "m, M"},
    TableKey{78, 49, "n, N"},
    TableKey{79, 24, "o, O"},
    TableKey{80, 25, "p, P"},
    TableKey{81, 16, "q, Q"},
    TableKey{82, 19, "r, R"},
    TableKey{83, 31, "s, S"},
    TableKey{84, 20, "t, T"},
    TableKey{85, 22, "u, U"},
    TableKey{86, 47, "v, V"},
    TableKey{87, 17, "w, W"},
    TableKey{88, 45, "x, X"},
    TableKey{89, 21, "y, Y"},
    TableKey{90, 44, "z, Z"},
    TableKey{91, 125, "Super_L"},
    TableKey{92, 126, "Super_R"},
    TableKey{93, 127, "Menu"},
    TableKey{95, 142, "XF86Sleep"},
    TableKey{106, 55, "KP_Multiply"},
    TableKey{107, 78, "KP_Add"},
    TableKey{109, 74, "KP_Subtract"},
    TableKey{110, 83, "KP_Decimal"},
    TableKey{111, 98, "KP_Divide"},
    TableKey{112, 59, "F1"},
    TableKey{113, 60, "F2"},
    TableKey{114, 61, "F3"},
    TableKey{115, 62, "F4"},
    TableKey{116, 63, "F5"},
    TableKey{117, 64, "F6"},
    TableKey{118, 65, "F7"},
    TableKey{119, 66, "F8"},
    TableKey{120, 67, "F9"},
    TableKey{121, 68, "F10"},
    TableKey{122, 87, "F11"},
    TableKey{123, 88, "F12"},
    TableKey{124, 183, "F13"},
    TableKey{125, 184, "F14"},
    TableKey{126, 185, "F15"},
    TableKey{127, 186, "F16"},
    TableKey{128, 187, "F17"},
    TableKey{129, 188, "F18"},
    TableKey{130, 189, "F19"},
    TableKey{131, 190, "F20"},
    TableKey{132, 191, "F21"},
    TableKey{133, 192, "F22"},
    TableKey{134, 193, "F23"},
    TableKey{135, 194, "F24"},
    TableKey{144, 69, "Num_Lock"},
    TableKey{145, 70, "Scroll_Lock"},
    TableKey{160, 42, "Shift_L"},
    TableKey{161, 54, "Shift_R"},
    TableKey{162, 29, "Control_L"},
    TableKey{163, 97, "Control_R"},
    TableKey{164, 56, "Alt_L"},
    TableKey{165, 100, "Alt_R"},
    TableKey{166, 158, "XF86Back"},
    TableKey{167, 159, "XF86Forward"},
    TableKey{168, 173, "XF86Reload"},
    TableKey{172, 172, "XF86HomePage"},
    TableKey{173, 113, "XF86AudioMute"},
    TableKey{174, 114, "XF86AudioLowerVolume"},
    TableKey{175, 115, "XF86AudioRaiseVolume"},
    TableKey{176, 163, "XF86AudioNext"},
    TableKey{177, 165, "XF86AudioPrev"},
    TableKey{178, 166, "XF86AudioStop"},
    TableKey{179, 164, "XF86AudioPlay"},
    TableKey{180, 155, "XF86Mail"},
    TableKey{186, 39, "semicolon, colon"},
    TableKey{187, 13, "equal, plus"},
    TableKey{188, 51, "comma, less"},
    TableKey{189, 12, "minus, underscore"},
    TableKey{190, 52, "period, greater"},
    TableKey{191, 53, "slash, question"},
    TableKey{192, 41, "grave, asciitilde"},
    TableKey{219, 26, "bracketleft, braceleft"},
    TableKey{220, 43, "backslash, bar"},
    TableKey{221, 27, "bracketright, braceright"},
    TableKey{222, 40, "apostrophe, quotedbl"},
};

// Which keys change what the others mean.
constexpr char modifiers[] = R"(
    modifier_map Shift { <K42>, <K54> };
    modifier_map Lock { <K58> };
    modifier_map Control { <K29>, <K97> };
    modifier_map Mod1 { <K56>, <K100> };
    modifier_map Mod2 { <K69> };
    modifier_map Mod4 { <K125>, <K126> };
)";

// XKB counts eight on top of the kernel.
constexpr int offset = 8;

QByteArray nameOf(int code)
{
    return "<K" + QByteArray::number(code) + '>';
}

} // namespace

std::span<const TableKey> keyTable()
{
    return keys;
}

const TableKey *tableKey(quint8 virtualKey)
{
    const auto found = std::ranges::find(keys, virtualKey, &TableKey::virtualKey);
    return found == keys.end() ? nullptr : &*found;
}

QByteArray keymapText(std::span<const char32_t> characters)
{
    QByteArray codes;
    QByteArray symbols;
    const auto add = [&](int code, const QByteArray &meaning) {
        if (symbols.contains(nameOf(code)))
            return; // one key has two virtual keys
        codes += nameOf(code) + '=' + QByteArray::number(code + offset) + ';';
        symbols += "key " + nameOf(code) + "{[" + meaning + "]};";
    };
    for (const TableKey &key : keys)
        add(key.code, key.symbols);
    int code = firstSpareCode;
    for (const char32_t character : characters)
        add(code++, 'U' + QByteArray::number(static_cast<quint32>(character), 16).rightJustified(4, '0'));
    return "xkb_keymap{xkb_keycodes{minimum=8;maximum=255;" + codes
        + "};xkb_types{include \"complete\"};xkb_compatibility{include \"complete\"};xkb_symbols{" + symbols
        + modifiers + "};};";
}

} // namespace plum
