#include "commands/key_table.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int functionKeys = 24;
constexpr quint8 f1 = 112;
constexpr quint8 pad0 = 96;

// The number behind `prefix` in a name such as "f12"; nothing for leading zeros and what is no number.
std::optional<int> numberBehind(QStringView name, QStringView prefix)
{
    if (!name.startsWith(prefix))
        return {};
    const QStringView digits = name.sliced(prefix.size());
    const bool areDigits = !digits.isEmpty() && digits.size() <= 2
        && std::ranges::all_of(digits, [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!areDigits || (digits.size() > 1 && digits[0] == u'0'))
        return {};
    return digits.toInt();
}

} // namespace

std::span<const NamedKey> namedKeys()
{
    static constexpr std::array rows{
        NamedKey{u"shift", 16},
        NamedKey{u"ctrl", 17},
        NamedKey{u"alt", 18},
        NamedKey{u"win", 91},
        NamedKey{u"super", 91},
        NamedKey{u"right_shift", 161, true},
        NamedKey{u"right_ctrl", 163, true},
        NamedKey{u"right_alt", 165, true},
        NamedKey{u"right_win", 92, true},
        NamedKey{u"menu", 93, true},
        NamedKey{u"enter", 13},
        NamedKey{u"esc", 27},
        NamedKey{u"tab", 9},
        NamedKey{u"space", 32},
        NamedKey{u"backspace", 8},
        NamedKey{u"capslock", 20},
        NamedKey{u"numlock", 144, true},
        NamedKey{u"scrolllock", 145},
        NamedKey{u"print", 44, true},
        NamedKey{u"pause", 19},
        NamedKey{u"left", 37, true},
        NamedKey{u"up", 38, true},
        NamedKey{u"right", 39, true},
        NamedKey{u"down", 40, true},
        NamedKey{u"page_up", 33, true},
        NamedKey{u"page_down", 34, true},
        NamedKey{u"end", 35, true},
        NamedKey{u"home", 36, true},
        NamedKey{u"insert", 45, true},
        NamedKey{u"delete", 46, true},
        NamedKey{u"comma", 188},
        NamedKey{u"period", 190},
        NamedKey{u"minus", 189},
        NamedKey{u"equal", 187},
        NamedKey{u"semicolon", 186},
        NamedKey{u"slash", 191},
        NamedKey{u"backquote", 192},
        NamedKey{u"bracket_left", 219},
        NamedKey{u"backslash", 220},
        NamedKey{u"bracket_right", 221},
        NamedKey{u"quote", 222},
        NamedKey{u"num_multiply", 106},
        NamedKey{u"num_add", 107},
        NamedKey{u"num_subtract", 109},
        NamedKey{u"num_decimal", 110},
        NamedKey{u"num_divide", 111, true},
        NamedKey{u"volume_mute", 173, true},
        NamedKey{u"volume_down", 174, true},
        NamedKey{u"volume_up", 175, true},
        NamedKey{u"media_next", 176, true},
        NamedKey{u"media_previous", 177, true},
        NamedKey{u"media_stop", 178, true},
        NamedKey{u"media_play", 179, true},
        NamedKey{u"browser_back", 166, true},
        NamedKey{u"browser_forward", 167, true},
        NamedKey{u"browser_refresh", 168, true},
        NamedKey{u"browser_home", 172, true},
        NamedKey{u"mail", 180, true},
        NamedKey{u"sleep", 95, true},
    };
    return rows;
}

std::optional<NamedKey> keyNamed(QStringView name)
{
    if (name.size() == 1) {
        const char16_t c = name[0].unicode();
        if (c >= u'a' && c <= u'z')
            return NamedKey{name, static_cast<quint8>(c - u'a' + 'A')};
        if (c >= u'0' && c <= u'9')
            return NamedKey{name, static_cast<quint8>(c)};
    }
    if (const auto number = numberBehind(name, u"f"); number && *number >= 1 && *number <= functionKeys)
        return NamedKey{name, static_cast<quint8>(f1 + *number - 1)};
    if (const auto number = numberBehind(name, u"num_"); number && *number <= 9)
        return NamedKey{name, static_cast<quint8>(pad0 + *number)};
    const auto row = std::ranges::find(namedKeys(), name, &NamedKey::name);
    return row == namedKeys().end() ? std::nullopt : std::optional(*row);
}

QStringList keyNames()
{
    QStringList names;
    for (char16_t c = u'a'; c <= u'z'; ++c)
        names += QString(QChar(c));
    for (char16_t c = u'0'; c <= u'9'; ++c)
        names += QString(QChar(c));
    for (int number = 1; number <= functionKeys; ++number)
        names += u"f%1"_s.arg(number);
    for (int number = 0; number <= 9; ++number)
        names += u"num_%1"_s.arg(number);
    for (const NamedKey &key : namedKeys())
        names += key.name.toString();
    return names;
}

} // namespace plum
