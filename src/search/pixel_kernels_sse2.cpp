#include "search/pixel_kernels.h"

#ifdef __SSE2__

#include <bit>
#include <emmintrin.h>

namespace plum {

namespace {

constexpr std::size_t width = 16; // bytes of a vector

__m128i load(const void *from)
{
    return _mm_loadu_si128(static_cast<const __m128i *>(from));
}

// All bits of a byte are set where value - low <= span, unsigned.
__m128i passing(__m128i value, __m128i low, __m128i span)
{
    const __m128i above = _mm_sub_epi8(value, low);
    return _mm_cmpeq_epi8(_mm_min_epu8(above, span), above);
}

quint64 bits(__m128i mask)
{
    return static_cast<quint64>(static_cast<unsigned>(_mm_movemask_epi8(mask)));
}

std::size_t findColour(const quint32 *pixels, std::size_t count, quint32 colour)
{
    const __m128i wanted = _mm_set1_epi32(static_cast<int>(colour));
    const __m128i channels = _mm_set1_epi32(0xffffff);
    const auto equal
        = [&](std::size_t at) { return _mm_cmpeq_epi32(_mm_and_si128(load(pixels + at), channels), wanted); };
    std::size_t at = 0;
    for (; at + 16 <= count; at += 16) {
        const __m128i any = _mm_or_si128(
            _mm_or_si128(equal(at), equal(at + 4)), _mm_or_si128(equal(at + 8), equal(at + 12)));
        if (_mm_movemask_epi8(any) != 0)
            break;
    }
    return at + plainPixelKernels.findColour(pixels + at, count - at, colour);
}

void extractChannel(const quint32 *pixels, std::size_t count, unsigned shift, quint8 *channel)
{
    const __m128i byte = _mm_set1_epi32(0xff);
    const __m128i places = _mm_cvtsi32_si128(static_cast<int>(shift));
    const auto four
        = [&](std::size_t at) { return _mm_and_si128(_mm_srl_epi32(load(pixels + at), places), byte); };
    std::size_t at = 0;
    for (; at + 16 <= count; at += 16) {
        const __m128i low = _mm_packs_epi32(four(at), four(at + 4));
        const __m128i high = _mm_packs_epi32(four(at + 8), four(at + 12));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(channel + at), _mm_packus_epi16(low, high));
    }
    plainPixelKernels.extractChannel(pixels + at, count - at, shift, channel + at);
}

Survivors nextSurvivors(std::span<const RowTest> tests, std::size_t from, std::size_t end)
{
    for (std::size_t first = from; first < end; first += PixelKernels::blockSize) {
        __m128i a = _mm_set1_epi8(-1);
        __m128i b = a;
        __m128i c = a;
        __m128i d = a;
        for (const RowTest &test : tests) {
            const __m128i low = _mm_set1_epi8(static_cast<char>(test.low));
            const __m128i span = _mm_set1_epi8(static_cast<char>(test.span));
            const quint8 *at = test.at + first;
            a = _mm_and_si128(a, passing(load(at), low, span));
            b = _mm_and_si128(b, passing(load(at + width), low, span));
            c = _mm_and_si128(c, passing(load(at + 2 * width), low, span));
            d = _mm_and_si128(d, passing(load(at + 3 * width), low, span));
            if (_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) == 0)
                break;
        }
        quint64 left = bits(a) | bits(b) << width | bits(c) << (2 * width) | bits(d) << (3 * width);
        if (end - first < PixelKernels::blockSize)
            left &= (quint64(1) << (end - first)) - 1;
        if (left != 0)
            return {first, left};
    }
    return {end, 0};
}

quint64 boundsHolding(quint8 value, const quint8 *low, const quint8 *span)
{
    const __m128i values = _mm_set1_epi8(static_cast<char>(value));
    quint64 holding = 0;
    for (std::size_t n = 0; n < PixelKernels::blockSize; n += width)
        holding |= bits(passing(values, load(low + n), load(span + n))) << n;
    return holding;
}

std::size_t firstFailure(const quint8 *row, const quint8 *low, const quint8 *span, std::size_t count)
{
    for (std::size_t at = 0; at < count; at += width) {
        const quint64 passed = bits(passing(load(row + at), load(low + at), load(span + at)));
        if (passed != 0xffff)
            return at + static_cast<std::size_t>(std::countr_one(passed));
    }
    return count;
}

} // namespace

const PixelKernels sse2PixelKernels{
    "SSE2", findColour, extractChannel, nextSurvivors, boundsHolding, firstFailure};

} // namespace plum

#endif
