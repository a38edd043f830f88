#pragma once

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>

namespace plum {

// Repeating bytes of a decoder's output: `length` bytes from `distance` bytes back, which may overlap.
inline constexpr qint64 copyUnit = 16; // bytes moved at once

// Copies `length` bytes from `distance` bytes back; may write up to 2 * copyUnit bytes behind them.
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
        return;
    }
    constexpr qint64 word = sizeof(quint64);
    if (distance >= word) {
        do {
            std::memcpy(to, from, word);
            to += word;
            from += word;
        } while (to < end);
        return;
    }
    // The pattern is shorter than a word: a word is filled with it, and the next one begins where a whole
    // number of patterns ends.
    static constexpr std::array<quint8, word> patterns{0, 8, 8, 6, 8, 5, 6, 7};
    quint64 pattern = 0;
    std::memcpy(&pattern, from, word);
    pattern = qFromLittleEndian(pattern) & ((quint64{1} << distance * 8) - 1);
    for (qint64 bits = distance * 8; bits < 64; bits *= 2)
        pattern |= pattern << bits;
    pattern = qToLittleEndian(pattern);
    do {
        std::memcpy(to, &pattern, word);
        to += patterns[static_cast<size_t>(distance)];
    } while (to < end);
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
