#include "search/pixel_kernels.h"

#ifdef __SSE2__

#include <bit>
#include <immintrin.h>

namespace plum {

namespace {

constexpr std::size_t width = 32; // bytes of a vector

[[gnu::target("avx2")]] inline __m256i load(const void *from)
{
    return _mm256_loadu_si256(static_cast<const __m256i *>(from));
}

// All bits of a byte are set where value - low <= span, unsigned.
[[gnu::target("avx2")]] inline __m256i passing(__m256i value, __m256i low, __m256i span)
{
    const __m256i above = _mm256_sub_epi8(value, low);
    return _mm256_cmpeq_epi8(_mm256_min_epu8(above, span), above);
}

[[gnu::target("avx2")]] inline quint64 bits(__m256i mask)
{
    return static_cast<quint64>(static_cast<unsigned>(_mm256_movemask_epi8(mask)));
}

[[gnu::target("avx2")]] inline __m256i equal(const quint32 *pixels, __m256i channels, __m256i wanted)
{
    return _mm256_cmpeq_epi32(_mm256_and_si256(load(pixels), channels), wanted);
}

[[gnu::target("avx2")]] std::size_t findColour(const quint32 *pixels, std::size_t count, quint32 colour)
{
    const __m256i wanted = _mm256_set1_epi32(static_cast<int>(colour));
    const __m256i channels = _mm256_set1_epi32(0xffffff);
    std::size_t at = 0;
    for (; at + 32 <= count; at += 32) {
        const quint32 *from = pixels + at;
        const __m256i any = _mm256_or_si256(
            _mm256_or_si256(equal(from, channels, wanted), equal(from + 8, channels, wanted)),
            _mm256_or_si256(equal(from + 16, channels, wanted), equal(from + 24, channels, wanted)));
        if (!_mm256_testz_si256(any, any))
            break;
    }
    return at + plainPixelKernels.findColour(pixels + at, count - at, colour);
}

[[gnu::target("avx2")]] void extractChannel(
    const quint32 *pixels, std::size_t count, unsigned shift, quint8 *channel)
{
    const __m256i byte = _mm256_set1_epi32(0xff);
    const __m128i places = _mm_cvtsi32_si128(static_cast<int>(shift));
    // Packing works on the halves of a vector apart; this brings the groups of four back into order.
    const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    std::size_t at = 0;
    for (; at + 32 <= count; at += 32) {
        const quint32 *from = pixels + at;
        const __m256i a = _mm256_and_si256(_mm256_srl_epi32(load(from), places), byte);
        const __m256i b = _mm256_and_si256(_mm256_srl_epi32(load(from + 8), places), byte);
        const __m256i c = _mm256_and_si256(_mm256_srl_epi32(load(from + 16), places), byte);
        const __m256i d = _mm256_and_si256(_mm256_srl_epi32(load(from + 24), places), byte);
        const __m256i packed = _mm256_packus_epi16(_mm256_packs_epi32(a, b), _mm256_packs_epi32(c, d));
        _mm256_storeu_si256(
            reinterpret_cast<__m256i *>(channel + at), _mm256_permutevar8x32_epi32(packed, order));
    }
    plainPixelKernels.extractChannel(pixels + at, count - at, shift, channel + at);
}

[[gnu::target("avx2")]] Survivors nextSurvivors(
    std::span<const RowTest> tests, std::size_t from, std::size_t end)
{
    for (std::size_t first = from; first < end; first += PixelKernels::blockSize) {
        __m256i a = _mm256_set1_epi8(-1);
        __m256i b = a;
        for (const RowTest &test : tests) {
            const __m256i low = _mm256_set1_epi8(static_cast<char>(test.low));
            const __m256i span = _mm256_set1_epi8(static_cast<char>(test.span));
            a = _mm256_and_si256(a, passing(load(test.at + first), low, span));
            b = _mm256_and_si256(b, passing(load(test.at + first + width), low, span));
            const __m256i any = _mm256_or_si256(a, b);
            if (_mm256_testz_si256(any, any))
                break;
        }
        quint64 left = bits(a) | bits(b) << width;
        if (end - first < PixelKernels::blockSize)
            left &= (quint64(1) << (end - first)) - 1;
        if (left != 0)
            return {first, left};
    }
    return {end, 0};
}

[[gnu::target("avx2")]] quint64 boundsHolding(quint8 value, const quint8 *low, const quint8 *span)
{
    const __m256i values = _mm256_set1_epi8(static_cast<char>(value));
    const quint64 first = bits(passing(values, load(low), load(span)));
    return first | bits(passing(values, load(low + width), load(span + width))) << width;
}

[[gnu::target("avx2")]] std::size_t firstFailure(
    const quint8 *row, const quint8 *low, const quint8 *span, std::size_t count)
{
    for (std::size_t at = 0; at < count; at += width) {
        const quint64 passed = bits(passing(load(row + at), load(low + at), load(span + at)));
        if (passed != 0xffffffff)
            return at + static_cast<std::size_t>(std::countr_one(passed));
    }
    return count;
}

} // namespace

const PixelKernels avx2PixelKernels{
    "AVX2", findColour, extractChannel, nextSurvivors, boundsHolding, firstFailure};

} // namespace plum

#endif
