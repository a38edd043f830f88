#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstring>

namespace plum {

// Repeating bytes of a decoder's output: `length` bytes from `distance` bytes back, which may overlap.
inline constexpr qint64 copyUnit = 16; // bytes moved at once

// Copies `length` bytes from `distance` bytes back; may write up to copyUnit bytes behind them.
inline void wideCopy(quint8 *to, qint64 length, qint64 distance)
{
    const quint8 *from = to - distance;
    quint8 *const end = to + length;
    if (distance >= copyUnit) {
        do {
            std::memcpy(to, from, copyUnit);
            to += copyUnit;
            from += copyUnit;
        } while (to < end);
    } else if (distance >= 8) {
        do {
            std::memcpy(to, from, 8);
            to += 8;
            from += 8;
        } while (to < end);
    } else if (distance == 1) {
        std::memset(to, *from, static_cast<size_t>(length));
    } else {
        // The pattern is shorter than a word. A whole number of patterns of at least 8 bytes is a distance
        // that repeats it just as well.
        const qint64 wide = distance * ((7 + distance) / distance);
        for (qint64 i = 0; i < wide; ++i)
            to[i] = from[i];
        from = to;
        to += wide;
        for (; to < end; to += 8, from += 8)
            std::memcpy(to, from, 8);
    }
}

// wideCopy without a byte too many. What was copied already serves as the source of the next, longer piece.
inline void exactCopy(quint8 *to, qint64 length, qint64 distance)
{
    const quint8 *const from = to - distance;
    for (qint64 copied = 0; copied < length;) {
        const qint64 part = std::min(length - copied, distance + copied);
        std::memcpy(to + copied, from, static_cast<size_t>(part));
        copied += part;
    }
}

} // namespace plum
