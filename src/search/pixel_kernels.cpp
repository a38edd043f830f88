#include "search/pixel_kernels.h"

#include <array>

namespace plum {

namespace {

std::size_t findColour(const quint32 *pixels, std::size_t count, quint32 colour)
{
    std::size_t at = 0;
    while (at < count && (pixels[at] & 0xffffff) != colour)
        ++at;
    return at;
}

void extractChannel(const quint32 *pixels, std::size_t count, unsigned shift, quint8 *channel)
{
    for (std::size_t i = 0; i < count; ++i)
        channel[i] = static_cast<quint8>(pixels[i] >> shift);
}

bool passes(quint8 value, quint8 low, quint8 span)
{
    return static_cast<quint8>(value - low) <= span;
}

Survivors nextSurvivors(std::span<const RowTest> tests, std::size_t from, std::size_t end)
{
    for (std::size_t first = from; first < end; first += PixelKernels::blockSize) {
        Survivors block{first, 0};
        const std::size_t size = std::min(PixelKernels::blockSize, end - first);
        for (std::size_t n = 0; n < size; ++n) {
            bool all = true;
            for (const RowTest &test : tests)
                all = all && passes(test.at[first + n], test.low, test.span);
            block.bits |= static_cast<quint64>(all) << n;
        }
        if (block.bits != 0)
            return block;
    }
    return {end, 0};
}

quint64 boundsHolding(quint8 value, const quint8 *low, const quint8 *span)
{
    quint64 holding = 0;
    for (std::size_t n = 0; n < PixelKernels::blockSize; ++n)
        holding |= static_cast<quint64>(passes(value, low[n], span[n])) << n;
    return holding;
}

std::size_t firstFailure(const quint8 *row, const quint8 *low, const quint8 *span, std::size_t count)
{
    std::size_t at = 0;
    while (at < count && passes(row[at], low[at], span[at]))
        ++at;
    return at;
}

} // namespace

const PixelKernels plainPixelKernels{
    "plain", findColour, extractChannel, nextSurvivors, boundsHolding, firstFailure};

#ifdef __SSE2__

std::span<const PixelKernels *const> usablePixelKernels()
{
    static constexpr std::array all{&plainPixelKernels, &sse2PixelKernels, &avx2PixelKernels};
    static const std::size_t usable = __builtin_cpu_supports("avx2") ? all.size() : all.size() - 1;
    return std::span(all).first(usable);
}

#else

std::span<const PixelKernels *const> usablePixelKernels()
{
    static constexpr std::array all{&plainPixelKernels};
    return all;
}

#endif

const PixelKernels &pixelKernels()
{
    return *usablePixelKernels().back();
}

} // namespace plum
