#pragma once

#include <QtGlobal>

#include <array>
#include <span>

namespace plum {

// The constants of DEFLATE and Deflate64.
namespace deflate {

inline constexpr int endOfBlock = 256;
inline constexpr int firstLengthSymbol = 257;
inline constexpr int literalSymbols = 288;
inline constexpr int distanceSymbols = 32;
inline constexpr int codeLengthSymbols = 19;
inline constexpr int longestCode = 15;
inline constexpr int longestCodeLengthCode = 7;
inline constexpr qint64 farthest = 65536; // how far back a Deflate64 distance reaches

struct Range
{
    quint16 base;
    quint8 extraBits;
};

// Length symbols 257 to 285.
inline constexpr std::array<Range, 29> lengths{{{3, 0}, {4, 0}, {5, 0}, {6, 0}, {7, 0}, {8, 0}, {9, 0},
    {10, 0}, {11, 1}, {13, 1}, {15, 1}, {17, 1}, {19, 2}, {23, 2}, {27, 2}, {31, 2}, {35, 3}, {43, 3},
    {51, 3}, {59, 3}, {67, 4}, {83, 4}, {99, 4}, {115, 4}, {131, 5}, {163, 5}, {195, 5}, {227, 5}, {258, 0}}};

// What symbol 285 means in Deflate64.
inline constexpr Range deflate64LastLength{3, 16};

// Distance symbols; the last two exist in Deflate64 alone.
inline constexpr std::array<Range, 32> distances{{{1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 1}, {7, 1}, {9, 2},
    {13, 2}, {17, 3}, {25, 3}, {33, 4}, {49, 4}, {65, 5}, {97, 5}, {129, 6}, {193, 6}, {257, 7}, {385, 7},
    {513, 8}, {769, 8}, {1025, 9}, {1537, 9}, {2049, 10}, {3073, 10}, {4097, 11}, {6145, 11}, {8193, 12},
    {12289, 12}, {16385, 13}, {24577, 13}, {32769, 14}, {49153, 14}}};
inline constexpr int deflateDistances = 30;

// The order in which the code lengths of the code length alphabet are sent.
inline constexpr std::array<quint8, codeLengthSymbols> codeLengthOrder{
    16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

} // namespace deflate

// One entry of a decoding table, made to be used with few instructions:
// bits 0-7 all bits to take from the input (code and extra bits), 8-11 the bits of the code itself, 12-15 the
// kind, 16-31 the value (symbol, base of a distance, start of a second-level table).
// In the table of literals and lengths a length less 3 stands in the bits 24-31, and literals stand before
// what follows them: with `literal`, 8-11 are the number of literals, the first one in the bits 16-23; a
// length with `literalBefore` has a literal in the bits 16-23 that comes out first.
using DecodeEntry = quint32;

namespace decode {

inline constexpr DecodeEntry literal = 1U << 15;
inline constexpr DecodeEntry oneLiteral = 1U << 8; // with literal: how many come out
inline constexpr DecodeEntry exceptional = 1U << 14; // neither literal nor range
inline constexpr DecodeEntry end = 1U << 13; // with exceptional: end of block
inline constexpr DecodeEntry link = 1U << 12; // with exceptional: go on in a second-level table
inline constexpr DecodeEntry literalBefore = 1U << 12; // with neither literal nor exceptional
inline constexpr DecodeEntry invalid = exceptional; // with exceptional alone: no such code

constexpr int totalBits(DecodeEntry entry)
{
    return static_cast<int>(entry & 0xFF);
}
constexpr int codeBits(DecodeEntry entry)
{
    return static_cast<int>(entry >> 8 & 0xF);
}
constexpr quint32 value(DecodeEntry entry)
{
    return entry >> 16;
}

// What the extra bits of a range say, given the input from its code on.
constexpr quint64 extra(DecodeEntry entry, quint64 bits)
{
    return (bits & ((quint64{1} << totalBits(entry)) - 1)) >> codeBits(entry);
}

constexpr quint32 shortestLength = 3;

} // namespace decode

// A prefix code as a table of two levels: the first is indexed by the next `PrimaryBits` input bits, longer
// codes go on in a second-level table. Codes that no symbol has lead to `decode::invalid`.
template <int PrimaryBits, int LongestCode, int Symbols> class DecodeTable
{
public:
    // Builds the code from the length of each symbol's code (0: none) and what each symbol means.
    // False for an over-subscribed code; an incomplete one is accepted, an empty one too.
    bool build(std::span<const quint8> codeLengths, std::span<const DecodeEntry, Symbols> meanings);

    // Joins a literal with the literal or length that follows it in the input into one entry where both codes
    // fit into the first level. For the table of literals and lengths alone.
    void joinLiterals();

    DecodeEntry first(quint64 bits) const { return m_entries[bits & (primarySize - 1)]; }

    // The entry for `bits`, which stand behind those of `link`.
    DecodeEntry second(DecodeEntry link, quint64 bits) const
    {
        const quint64 mask = (quint64{1} << decode::codeBits(link)) - 1;
        return m_entries[decode::value(link) + (bits & mask)];
    }

private:
    static constexpr size_t primarySize = size_t{1} << PrimaryBits;
    static constexpr int secondBits = LongestCode - PrimaryBits;

    size_t m_size = 0; // of both levels
    // Every second-level table holds one symbol at least.
    std::array<DecodeEntry, primarySize + (Symbols << secondBits)> m_entries{};
};

inline constexpr int literalPrimaryBits = 11;
inline constexpr int distancePrimaryBits = 8;

using LiteralTable = DecodeTable<literalPrimaryBits, deflate::longestCode, deflate::literalSymbols>;
using DistanceTable = DecodeTable<distancePrimaryBits, deflate::longestCode, deflate::distanceSymbols>;
using CodeLengthTable
    = DecodeTable<deflate::longestCodeLengthCode, deflate::longestCodeLengthCode, deflate::codeLengthSymbols>;

extern template class DecodeTable<literalPrimaryBits, deflate::longestCode, deflate::literalSymbols>;
extern template class DecodeTable<distancePrimaryBits, deflate::longestCode, deflate::distanceSymbols>;
extern template class DecodeTable<deflate::longestCodeLengthCode, deflate::longestCodeLengthCode,
    deflate::codeLengthSymbols>;

// What the symbols of each alphabet mean, as entries without the length of their code.
std::span<const DecodeEntry, deflate::literalSymbols> literalMeanings(bool deflate64);
std::span<const DecodeEntry, deflate::distanceSymbols> distanceMeanings(bool deflate64);
std::span<const DecodeEntry, deflate::codeLengthSymbols> codeLengthMeanings();

} // namespace plum
