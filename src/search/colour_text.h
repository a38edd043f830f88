#pragma once

#include <QString>

namespace plum {

// Three channels, of a colour or of a tolerance.
struct Channels
{
    quint8 red = 0;
    quint8 green = 0;
    quint8 blue = 0;

    bool operator==(const Channels &) const = default;

    // From "RRGGBB". What follows the six digits does not count; fewer digits, or what is no hexadecimal
    // digit, raises a type mismatch (13).
    static Channels fromText(QStringView text);

    quint32 pixel() const { return quint32(red) << 16 | quint32(green) << 8 | blue; }
};

} // namespace plum
