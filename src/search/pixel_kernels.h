#pragma once

#include <QtGlobal>

#include <cstddef>
#include <span>

namespace plum {

// One channel of one picture pixel, held against a run of neighbouring positions of the picture: the
// position n passes when at[n] lies in low ... low + span.
struct RowTest
{
    const quint8 *at = nullptr;
    quint8 low = 0;
    quint8 span = 255;
};

// The positions of one block that passed every test: bit n stands for position first + n.
struct Survivors
{
    std::size_t first = 0;
    quint64 bits = 0; // 0: no position was left
};

// The loops of the screen searches that touch every pixel, once for each set of vector instructions.
// Reads may run past the end of a row by `slack` bytes at most, so rows of channel bytes end with that many.
struct PixelKernels
{
    static constexpr std::size_t blockSize = 64; // positions in one block of survivors
    static constexpr std::size_t rowUnit = 32; // `firstFailure` looks at that many bytes at a time
    static constexpr std::size_t slack = 64;

    const char *name;

    // Index of the first pixel whose blue, green and red are those of `colour`; `count` when there is none.
    std::size_t (*findColour)(const quint32 *pixels, std::size_t count, quint32 colour);

    // The byte of each pixel that `shift` bits bring down: 0 blue, 8 green, 16 red.
    void (*extractChannel)(const quint32 *pixels, std::size_t count, unsigned shift, quint8 *channel);

    // The first block from `from` on, `from` a multiple of the block size, in which a position below `end`
    // passes all tests.
    Survivors (*nextSurvivors)(std::span<const RowTest> tests, std::size_t from, std::size_t end);

    // Bit n: `value` lies in low[n] ... low[n] + span[n]. Reads a whole block of each.
    quint64 (*boundsHolding)(quint8 value, const quint8 *low, const quint8 *span);

    // Index of the first n with row[n] outside low[n] ... low[n] + span[n]; `count`, a multiple of the row
    // unit, when there is none.
    std::size_t (*firstFailure)(const quint8 *row, const quint8 *low, const quint8 *span, std::size_t count);
};

// The fastest kernels that this processor can run.
const PixelKernels &pixelKernels();

// All kernels that this processor can run, the plain ones first.
std::span<const PixelKernels *const> usablePixelKernels();

extern const PixelKernels plainPixelKernels;
#ifdef __SSE2__
extern const PixelKernels sse2PixelKernels;
extern const PixelKernels avx2PixelKernels;
#endif

} // namespace plum
