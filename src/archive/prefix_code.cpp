#include "archive/prefix_code.h"

#include "archive/inflate_tables.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace plum {

namespace {

// Symbols that are worth so much together.
struct Package
{
    quint64 weight;
    std::vector<quint16> symbols;
};

bool isLighter(const Package &one, const Package &other)
{
    return one.weight < other.weight;
}

std::vector<Package> usedSymbols(std::span<const quint32> counts)
{
    std::vector<Package> used;
    for (size_t symbol = 0; symbol < counts.size(); ++symbol) {
        if (counts[symbol] > 0)
            used.push_back({counts[symbol], {static_cast<quint16>(symbol)}});
    }
    for (quint16 symbol = 0; used.size() < 2; ++symbol) {
        if (counts[symbol] == 0)
            used.push_back({1, {symbol}});
    }
    std::ranges::stable_sort(used, isLighter);
    return used;
}

std::vector<Package> inPairs(const std::vector<Package> &packages)
{
    std::vector<Package> pairs;
    for (size_t i = 0; i + 1 < packages.size(); i += 2) {
        Package pair{packages[i].weight + packages[i + 1].weight, packages[i].symbols};
        const std::vector<quint16> &second = packages[i + 1].symbols;
        pair.symbols.insert(pair.symbols.end(), second.begin(), second.end());
        pairs.push_back(std::move(pair));
    }
    return pairs;
}

} // namespace

PrefixCode::PrefixCode(std::vector<quint8> lengths)
    : m_lengths(std::move(lengths))
    , m_codes(m_lengths.size())
{
    std::array<quint32, deflate::longestCode + 1> counts{};
    for (const quint8 length : m_lengths)
        ++counts[length];
    counts[0] = 0;
    std::array<quint32, deflate::longestCode + 1> next{};
    for (size_t length = 1; length < next.size(); ++length)
        next[length] = (next[length - 1] + counts[length - 1]) << 1;
    for (size_t symbol = 0; symbol < m_lengths.size(); ++symbol) {
        const quint8 length = m_lengths[symbol];
        const quint32 code = length > 0 ? next[length]++ : 0;
        for (int bit = 0; bit < length; ++bit)
            m_codes[symbol] = static_cast<quint16>(quint32(m_codes[symbol]) << 1 | (code >> bit & 1));
    }
}

// Package-merge: in each round the lightest packages are put together in pairs and laid beside the symbols
// again; after as many rounds as a code may have bits, every time that a symbol is among the lightest is one
// bit of its code.
PrefixCode PrefixCode::of(std::span<const quint32> counts, int longest)
{
    const std::vector<Package> symbols = usedSymbols(counts);
    std::vector<Package> packages = symbols;
    for (int round = 1; round < longest; ++round) {
        const std::vector<Package> pairs = inPairs(packages);
        packages.clear();
        std::ranges::merge(symbols, pairs, std::back_inserter(packages), isLighter);
    }
    std::vector<quint8> lengths(counts.size());
    for (size_t i = 0; i < 2 * (symbols.size() - 1); ++i) {
        for (const quint16 symbol : packages[i].symbols)
            ++lengths[symbol];
    }
    return PrefixCode(std::move(lengths));
}

} // namespace plum
