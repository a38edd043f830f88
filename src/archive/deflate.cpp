#include "archive/deflate.h"

#include "archive/bit_writer.h"
#include "archive/inflate_tables.h"
#include "archive/match_finder.h"
#include "archive/prefix_code.h"

#include <algorithm>
#include <array>

namespace plum {

namespace {

constexpr size_t stepsInBlock = 32768;
constexpr qsizetype mostStored = 65535; // bytes in a stored block

// What the code length alphabet has besides the lengths.
constexpr quint8 lastLengthAgain = 16;
constexpr quint8 shortRunOfZeros = 17;
constexpr quint8 longRunOfZeros = 18;

enum BlockType : quint32 { Stored = 0, Fixed = 1, Dynamic = 2 };

// A number as its symbol and what is added to the symbol's base.
struct Split
{
    size_t symbol;
    quint32 extra;
    int extraBits;
};

Split split(std::span<const deflate::Range> ranges, quint16 number)
{
    const auto range = std::ranges::upper_bound(ranges, number, {}, &deflate::Range::base) - 1;
    return {static_cast<size_t>(range - ranges.begin()), static_cast<quint32>(number - range->base),
        range->extraBits};
}

Split splitLength(quint16 length)
{
    Split parts = split(deflate::lengths, length);
    parts.symbol += deflate::firstLengthSymbol;
    return parts;
}

Split splitDistance(quint16 distance)
{
    return split(deflate::distances, distance);
}

struct Codes
{
    PrefixCode literals;
    PrefixCode distances;
};

const Codes &fixedCodes()
{
    static const Codes codes = [] {
        std::vector<quint8> literals(deflate::literalSymbols, 8);
        std::fill(literals.begin() + 144, literals.begin() + 256, quint8{9});
        std::fill(literals.begin() + 256, literals.begin() + 280, quint8{7});
        return Codes{
            PrefixCode(std::move(literals)), PrefixCode(std::vector<quint8>(deflate::deflateDistances, 5))};
    }();
    return codes;
}

Codes bestCodes(std::span<const Step> steps)
{
    // The last two literal symbols of the fixed code stand for nothing.
    std::array<quint32, deflate::firstLengthSymbol + deflate::lengths.size()> literals{};
    std::array<quint32, deflate::deflateDistances> distances{};
    ++literals[deflate::endOfBlock];
    for (const Step &step : steps) {
        if (step.length == 0) {
            ++literals[step.value];
        } else {
            ++literals[splitLength(step.length).symbol];
            ++distances[splitDistance(step.value).symbol];
        }
    }
    return {PrefixCode::of(literals, deflate::longestCode), PrefixCode::of(distances, deflate::longestCode)};
}

// One symbol of the code length alphabet.
struct LengthSymbol
{
    quint8 symbol;
    quint8 extra = 0;
    quint8 extraBits = 0;
};

// The lengths of a code's codes, runs of equal ones shortened.
std::vector<LengthSymbol> lengthSymbols(std::span<const quint8> lengths)
{
    std::vector<LengthSymbol> symbols;
    for (size_t i = 0; i < lengths.size();) {
        const quint8 length = lengths[i];
        size_t run = 1;
        while (i + run < lengths.size() && lengths[i + run] == length)
            ++run;
        i += run;
        if (length > 0) {
            symbols.push_back({length});
            --run;
        }
        while (run >= 3) {
            const size_t part = std::min<size_t>(run, length > 0 ? 6 : 138);
            run -= part;
            if (length > 0)
                symbols.push_back({lastLengthAgain, static_cast<quint8>(part - 3), 2});
            else if (part <= 10)
                symbols.push_back({shortRunOfZeros, static_cast<quint8>(part - 3), 3});
            else
                symbols.push_back({longRunOfZeros, static_cast<quint8>(part - 11), 7});
        }
        symbols.insert(symbols.end(), run, {length});
    }
    return symbols;
}

// What stands in front of a block's steps to tell its codes.
void putCodes(const Codes &codes, BitWriter &to)
{
    std::vector<quint8> lengths = codes.literals.lengths();
    const std::vector<quint8> &distances = codes.distances.lengths();
    lengths.insert(lengths.end(), distances.begin(), distances.end());
    const std::vector<LengthSymbol> symbols = lengthSymbols(lengths);
    std::array<quint32, deflate::codeLengthSymbols> counts{};
    for (const LengthSymbol &each : symbols)
        ++counts[each.symbol];
    const PrefixCode code = PrefixCode::of(counts, deflate::longestCodeLengthCode);

    size_t sent = deflate::codeLengthOrder.size();
    while (sent > 4 && code.length(deflate::codeLengthOrder[sent - 1]) == 0)
        --sent;
    to.put(static_cast<quint32>(codes.literals.lengths().size() - 257), 5);
    to.put(static_cast<quint32>(distances.size() - 1), 5);
    to.put(static_cast<quint32>(sent - 4), 4);
    for (size_t i = 0; i < sent; ++i)
        to.put(static_cast<quint32>(code.length(deflate::codeLengthOrder[i])), 3);
    for (const LengthSymbol &each : symbols) {
        to.put(code.code(each.symbol), code.length(each.symbol));
        to.put(each.extra, each.extraBits);
    }
}

void put(const PrefixCode &code, const Split &parts, BitWriter &to)
{
    to.put(code.code(parts.symbol), code.length(parts.symbol));
    to.put(parts.extra, parts.extraBits);
}

void putSteps(std::span<const Step> steps, const Codes &codes, BitWriter &to)
{
    for (const Step &step : steps) {
        if (step.length == 0) {
            put(codes.literals, {step.value, 0, 0}, to);
        } else {
            put(codes.literals, splitLength(step.length), to);
            put(codes.distances, splitDistance(step.value), to);
        }
    }
    put(codes.literals, {deflate::endOfBlock, 0, 0}, to);
}

void putHeader(BlockType type, bool isLast, BitWriter &to)
{
    to.put(isLast, 1);
    to.put(type, 2);
}

void putCoded(std::span<const Step> steps, BlockType type, bool isLast, BitWriter &to)
{
    putHeader(type, isLast, to);
    const Codes codes = type == Fixed ? fixedCodes() : bestCodes(steps);
    if (type == Dynamic)
        putCodes(codes, to);
    putSteps(steps, codes, to);
}

qsizetype codedSize(std::span<const Step> steps, BlockType type)
{
    BitWriter alone;
    putCoded(steps, type, false, alone);
    return alone.finish().size();
}

void putStored(QByteArrayView bytes, bool isLast, BitWriter &to)
{
    do {
        const QByteArrayView part = bytes.first(std::min(bytes.size(), mostStored));
        bytes = bytes.sliced(part.size());
        putHeader(Stored, isLast && bytes.isEmpty(), to);
        to.alignToByte();
        const auto size = static_cast<quint32>(part.size());
        to.put(size, 16);
        to.put(~size & 0xFFFF, 16);
        to.append(part);
    } while (!bytes.isEmpty());
}

qsizetype lengthOf(std::span<const Step> steps)
{
    qsizetype length = 0;
    for (const Step &step : steps)
        length += std::max<qsizetype>(step.length, 1);
    return length;
}

// In the way that takes the least room.
void putBlock(std::span<const Step> steps, QByteArrayView bytes, bool isLast, BitWriter &to)
{
    constexpr qsizetype storedHeader = 5; // bytes
    const qsizetype storedSize = bytes.size() + storedHeader * (bytes.size() / mostStored + 1);
    const qsizetype fixedSize = codedSize(steps, Fixed);
    const qsizetype dynamicSize = codedSize(steps, Dynamic);
    if (storedSize <= std::min(fixedSize, dynamicSize))
        putStored(bytes, isLast, to);
    else
        putCoded(steps, fixedSize <= dynamicSize ? Fixed : Dynamic, isLast, to);
}

} // namespace

QByteArray deflated(QByteArrayView bytes)
{
    BitWriter to;
    const std::vector<Step> all = stepsOf(bytes);
    std::span<const Step> rest(all);
    do {
        const std::span<const Step> steps = rest.first(std::min(rest.size(), stepsInBlock));
        rest = rest.subspan(steps.size());
        const QByteArrayView told = bytes.first(lengthOf(steps));
        bytes = bytes.sliced(told.size());
        putBlock(steps, told, rest.empty(), to);
    } while (!rest.empty());
    return to.finish();
}

} // namespace plum
