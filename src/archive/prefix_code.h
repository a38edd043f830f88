#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace plum {

// A prefix code as DEFLATE counts it: the codes follow from their lengths.
class PrefixCode
{
public:
    // The length of each symbol's code in bits, 0 for a symbol without one.
    explicit PrefixCode(std::vector<quint8> lengths);

    // The code in which symbols that occur so often take the fewest bits, no code longer than `longest`.
    // At least two symbols have a code, whatever the counts: some readers take nothing less.
    static PrefixCode of(std::span<const quint32> counts, int longest);

    const std::vector<quint8> &lengths() const { return m_lengths; }
    int length(size_t symbol) const { return m_lengths[symbol]; }

    // The first bit of the code is the lowest.
    quint32 code(size_t symbol) const { return m_codes[symbol]; }

private:
    std::vector<quint8> m_lengths;
    std::vector<quint16> m_codes;
};

} // namespace plum
