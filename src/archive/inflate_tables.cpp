#include "archive/inflate_tables.h"

#include <algorithm>

namespace plum {

namespace {

constexpr DecodeEntry literalMeaning(int symbol)
{
    return decode::literal | decode::oneLiteral | static_cast<DecodeEntry>(symbol) << 16;
}

constexpr DecodeEntry rangeMeaning(deflate::Range range)
{
    return static_cast<DecodeEntry>(range.base) << 16 | range.extraBits;
}

constexpr DecodeEntry lengthMeaning(deflate::Range range)
{
    return (range.base - decode::shortestLength) << 24 | range.extraBits;
}

constexpr auto makeLiteralMeanings(bool deflate64)
{
    std::array<DecodeEntry, deflate::literalSymbols> meanings{};
    for (int symbol = 0; symbol < deflate::endOfBlock; ++symbol)
        meanings[static_cast<size_t>(symbol)] = literalMeaning(symbol);
    meanings[deflate::endOfBlock] = decode::exceptional | decode::end;
    size_t symbol = deflate::firstLengthSymbol;
    for (const deflate::Range range : deflate::lengths)
        meanings[symbol++] = lengthMeaning(range);
    if (deflate64)
        meanings[symbol - 1] = lengthMeaning(deflate::deflate64LastLength);
    while (symbol < meanings.size())
        meanings[symbol++] = decode::invalid;
    return meanings;
}

constexpr auto makeDistanceMeanings(bool deflate64)
{
    std::array<DecodeEntry, deflate::distanceSymbols> meanings{};
    for (size_t symbol = 0; symbol < meanings.size(); ++symbol) {
        const bool exists = deflate64 || symbol < deflate::deflateDistances;
        meanings[symbol] = exists ? rangeMeaning(deflate::distances[symbol]) : decode::invalid;
    }
    return meanings;
}

constexpr auto makeCodeLengthMeanings()
{
    std::array<DecodeEntry, deflate::codeLengthSymbols> meanings{};
    for (int symbol = 0; symbol < deflate::codeLengthSymbols; ++symbol)
        meanings[static_cast<size_t>(symbol)] = literalMeaning(symbol);
    return meanings;
}

constexpr auto deflateLiterals = makeLiteralMeanings(false);
constexpr auto deflate64Literals = makeLiteralMeanings(true);
constexpr auto deflateDistanceMeanings = makeDistanceMeanings(false);
constexpr auto deflate64DistanceMeanings = makeDistanceMeanings(true);
constexpr auto codeLengths = makeCodeLengthMeanings();

// Codes arrive with their first bit lowest.
constexpr quint32 reversed(quint32 code, int bits)
{
    code = (code & 0x5555) << 1 | (code >> 1 & 0x5555);
    code = (code & 0x3333) << 2 | (code >> 2 & 0x3333);
    code = (code & 0x0F0F) << 4 | (code >> 4 & 0x0F0F);
    code = (code & 0x00FF) << 8 | code >> 8;
    return code >> (16 - bits);
}

constexpr DecodeEntry withCode(DecodeEntry meaning, int codeBits)
{
    const auto bits = static_cast<DecodeEntry>(codeBits);
    return meaning + (meaning & decode::literal ? bits : bits << 8 | bits);
}

} // namespace

std::span<const DecodeEntry, deflate::literalSymbols> literalMeanings(bool deflate64)
{
    return deflate64 ? deflate64Literals : deflateLiterals;
}

std::span<const DecodeEntry, deflate::distanceSymbols> distanceMeanings(bool deflate64)
{
    return deflate64 ? deflate64DistanceMeanings : deflateDistanceMeanings;
}

std::span<const DecodeEntry, deflate::codeLengthSymbols> codeLengthMeanings()
{
    return codeLengths;
}

template <int PrimaryBits, int LongestCode, int Symbols>
bool DecodeTable<PrimaryBits, LongestCode, Symbols>::build(
    std::span<const quint8> lengthOfSymbol, std::span<const DecodeEntry, Symbols> meanings)
{
    std::array<quint16, deflate::longestCode + 1> count{};
    for (const quint8 length : lengthOfSymbol)
        ++count[length];
    count[0] = 0;

    int longest = 0;
    int free = 1;
    std::array<quint16, deflate::longestCode + 2> firstOfLength{}; // in the order of the codes
    for (int length = 1; length <= deflate::longestCode; ++length) {
        const size_t at = static_cast<size_t>(length);
        free = 2 * free - count[at];
        if (free < 0)
            return false;
        if (count[at] > 0)
            longest = length;
        firstOfLength[at + 1] = static_cast<quint16>(firstOfLength[at] + count[at]);
    }

    std::array<quint16, Symbols> ordered{};
    auto next = firstOfLength;
    for (size_t symbol = 0; symbol < lengthOfSymbol.size(); ++symbol) {
        if (lengthOfSymbol[symbol] > 0)
            ordered[next[lengthOfSymbol[symbol]]++] = static_cast<quint16>(symbol);
    }

    const int primaryBits = std::min(longest, PrimaryBits);

    // The table grows with the length of the codes: what stands there for one length is repeated once for
    // the next one, and new codes are put on top of it.
    size_t size = 1;
    m_entries[0] = decode::invalid;
    quint32 code = 0;
    size_t index = 0;
    for (int length = 1; length <= primaryBits; ++length) {
        std::copy_n(m_entries.begin(), size, m_entries.begin() + static_cast<std::ptrdiff_t>(size));
        size *= 2;
        code <<= 1;
        for (int i = 0; i < count[static_cast<size_t>(length)]; ++i)
            m_entries[reversed(code++, length)] = withCode(meanings[ordered[index++]], length);
    }
    for (; size < primarySize; size *= 2)
        std::copy_n(m_entries.begin(), size, m_entries.begin() + static_cast<std::ptrdiff_t>(size));

    const int tailBits = longest - primaryBits;
    const quint32 tailMask = (1U << tailBits) - 1;
    size_t tableStart = 0;
    quint32 tablePrefix = ~0U;
    size_t end = size;
    for (int length = primaryBits + 1; length <= longest; ++length) {
        code <<= 1;
        for (int i = 0; i < count[static_cast<size_t>(length)]; ++i, ++code) {
            const int inSecond = length - primaryBits;
            const quint32 prefix = code >> inSecond;
            if (prefix != tablePrefix) {
                tablePrefix = prefix;
                tableStart = end;
                end += size_t{tailMask} + 1;
                std::fill(m_entries.begin() + static_cast<std::ptrdiff_t>(tableStart),
                    m_entries.begin() + static_cast<std::ptrdiff_t>(end), decode::invalid);
                m_entries[reversed(prefix, primaryBits)] = decode::exceptional | decode::link
                    | static_cast<DecodeEntry>(tableStart) << 16 | static_cast<DecodeEntry>(tailBits) << 8
                    | static_cast<DecodeEntry>(primaryBits);
            }
            const DecodeEntry entry = withCode(meanings[ordered[index++]], inSecond);
            const quint32 step = 1U << inSecond;
            for (quint32 at = reversed(code & (step - 1), inSecond); at <= tailMask; at += step)
                m_entries[tableStart + at] = entry;
        }
    }
    m_size = end;
    return true;
}

template <int PrimaryBits, int LongestCode, int Symbols>
void DecodeTable<PrimaryBits, LongestCode, Symbols>::joinLiterals()
{
    constexpr DecodeEntry firstByte = 0xFFU << 16;
    constexpr DecodeEntry lengthField = 0xFFU << 24;
    // Downwards: the second code's entry stands at a lower index and is not joined yet. Chosen without jumps,
    // which nobody could foresee.
    for (size_t index = primarySize; index-- > 0;) {
        const DecodeEntry entry = m_entries[index];
        const DecodeEntry next = m_entries[index >> (decode::totalBits(entry) & 31)];
        const auto extraBits = static_cast<DecodeEntry>(decode::totalBits(next) - decode::codeBits(next));
        const auto all = static_cast<DecodeEntry>(decode::totalBits(entry) + decode::totalBits(next));
        const DecodeEntry pair = decode::literal | 2 * decode::oneLiteral | (entry & firstByte)
            | decode::value(next) << 24 | all;
        const DecodeEntry range = decode::literalBefore | (entry & firstByte) | (next & lengthField)
            | (all - extraBits) << 8 | all;
        const DecodeEntry joined = next & decode::literal ? pair : range;
        const DecodeEntry codes = next & decode::literal ? all : all - extraBits;
        const bool fits = (entry & decode::literal) && !(next & decode::exceptional) && codes <= PrimaryBits;
        m_entries[index] = fits ? joined : entry;
    }
}

template class DecodeTable<literalPrimaryBits, deflate::longestCode, deflate::literalSymbols>;
template class DecodeTable<distancePrimaryBits, deflate::longestCode, deflate::distanceSymbols>;
template class DecodeTable<deflate::longestCodeLengthCode, deflate::longestCodeLengthCode,
    deflate::codeLengthSymbols>;

} // namespace plum
