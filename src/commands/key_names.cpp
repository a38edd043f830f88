#include "commands/key_names.h"

#include <array>

namespace plum {

std::span<const KeyName> keycodeasc()
{
    static constexpr std::array rows{
        KeyName{u"a", 65, true},
        KeyName{u"b", 66, true},
        KeyName{u"c", 67, true},
        KeyName{u"d", 68, true},
        KeyName{u"e", 69, true},
        KeyName{u"f", 70, true},
        KeyName{u"g", 71, true},
        KeyName{u"h", 72, true},
        KeyName{u"i", 73, true},
        KeyName{u"j", 74, true},
        KeyName{u"k", 75, true},
        KeyName{u"l", 76, true},
        KeyName{u"m", 77, true},
        KeyName{u"n", 78, true},
        KeyName{u"o", 79, true},
        KeyName{u"p", 80, true},
        KeyName{u"q", 81, true},
        KeyName{u"r", 82, true},
        KeyName{u"s", 83, true},
        KeyName{u"t", 84, true},
        KeyName{u"u", 85, true},
        KeyName{u"v", 86, true},
        KeyName{u"w", 87, true},
        KeyName{u"x", 88, true},
        KeyName{u"y", 89, true},
        KeyName{u"", 90, true}, // the row of z compares with nothing at all
        KeyName{u"shift", 16, true},
        KeyName{u"ctrl", 17, true},
        KeyName{u"alt", 18, true},
        KeyName{u"win", 91, true},
        KeyName{u"enter", 13, true},
        KeyName{u"esc", 27, false},
        KeyName{u"f1", 112, false},
        KeyName{u"f2", 113, false},
        KeyName{u"f3", 114, false},
        KeyName{u"f4", 115, false},
        KeyName{u"f5", 116, false},
        KeyName{u"f6", 117, false},
        KeyName{u"f7", 118, false},
        KeyName{u"f8", 119, false},
        KeyName{u"f9", 120, false},
        KeyName{u"f10", 121, false},
        KeyName{u"f11", 122, false},
        KeyName{u"f12", 123, false},
        KeyName{u"tab", 9, false},
        KeyName{u"capslock", 20, false},
        KeyName{u"BACKSPACE", 8, false}, // never equal to a lower-cased name
        KeyName{u"left", 37, false},
        KeyName{u"up", 38, false},
        KeyName{u"right", 39, false},
        KeyName{u"down", 40, false},
        KeyName{u"print", 44, false},
    };
    return rows;
}

quint8 virtualKeyOf(const QString &name)
{
    const QString lowered = name.toLower();
    for (const KeyName &key : keycodeasc()) {
        if (key.name == lowered)
            return key.returned ? key.virtualKey : quint8(0);
    }
    return 0;
}

} // namespace plum
