#include "archive/reference_inflate.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace plum::reference {

using namespace Qt::StringLiterals;

namespace {

struct Failure
{
    QString message;
};

class Bits
{
public:
    explicit Bits(std::span<const quint8> input)
        : m_input(input)
    {
    }

    int bit()
    {
        const size_t byte = m_position / 8;
        const int value = byte < m_input.size() ? m_input[byte] >> (m_position % 8) & 1 : 0;
        ++m_position;
        return value;
    }

    int number(int bits)
    {
        int value = 0;
        for (int i = 0; i < bits; ++i)
            value |= bit() << i;
        return value;
    }

    void toByte() { m_position = (m_position + 7) / 8 * 8; }
    qint64 bytesUsed() const { return static_cast<qint64>((m_position + 7) / 8); }
    qint64 bytesLeft() const { return static_cast<qint64>(m_input.size()) - bytesUsed(); }

private:
    std::span<const quint8> m_input;
    size_t m_position = 0; // in bits
};

class Code
{
public:
    Code(const std::vector<int> &lengths, const QString &name)
    {
        std::array<int, 16> count{};
        for (const int length : lengths)
            ++count[static_cast<size_t>(length)];
        count[0] = 0;
        int free = 1;
        for (size_t length = 1; length < count.size(); ++length) {
            free = free * 2 - count[length];
            if (free < 0)
                throw Failure{name + u": Huffman tree over subscribe"_s};
        }
        int next = 0;
        for (size_t length = 1; length < count.size(); ++length) {
            next = (next + count[length - 1]) * 2;
            int code = next;
            for (size_t symbol = 0; symbol < lengths.size(); ++symbol) {
                if (lengths[symbol] == static_cast<int>(length))
                    m_symbols.push_back({static_cast<int>(length), code++, static_cast<int>(symbol)});
            }
        }
    }

    int read(Bits &bits) const
    {
        int code = 0;
        int length = 0;
        for (const Symbol &symbol : m_symbols) {
            for (; length < symbol.length; ++length)
                code = code * 2 + bits.bit();
            if (symbol.code == code)
                return symbol.symbol;
        }
        throw Failure{u"Error in compressed data"_s};
    }

private:
    struct Symbol
    {
        int length;
        int code;
        int symbol;
    };
    std::vector<Symbol> m_symbols; // by length, then by code
};

// Base and extra bits of the length symbols from 257 on, computed the way the tables are laid out.
void lengthOf(int symbol, bool deflate64, int &base, int &extra)
{
    if (symbol > 285)
        throw Failure{u"Error in compressed data"_s};
    if (symbol == 285) {
        base = deflate64 ? 3 : 258;
        extra = deflate64 ? 16 : 0;
        return;
    }
    const int index = symbol - 257;
    extra = index < 8 ? 0 : index / 4 - 1;
    base = index < 8 ? 3 + index : 3 + ((4 + index % 4) << extra);
}

void distanceOf(int symbol, bool deflate64, int &base, int &extra)
{
    if (symbol > (deflate64 ? 31 : 29))
        throw Failure{u"Error in compressed data"_s};
    extra = symbol < 4 ? 0 : symbol / 2 - 1;
    base = symbol < 4 ? 1 + symbol : 1 + ((2 + symbol % 2) << extra);
}

class Decoder
{
public:
    Decoder(std::span<const quint8> input, qint64 outputSize, bool deflate64)
        : m_bits(input)
        , m_input(input)
        , m_outputSize(outputSize)
        , m_deflate64(deflate64)
    {
    }

    Inflated run()
    {
        try {
            blocks();
        } catch (const Failure &failure) {
            m_result.message = failure.message;
        }
        return std::move(m_result);
    }

private:
    qint64 room() const { return m_outputSize - static_cast<qint64>(m_result.bytes.size()); }

    void blocks()
    {
        bool isLast = false;
        while (!isLast) {
            isLast = m_bits.bit() == 1;
            const int type = m_bits.number(2);
            if (type == 3)
                throw Failure{u"Error in compressed data"_s};
            if (type == 0)
                stored();
            else if (type == 1)
                fixed();
            else
                dynamic();
            m_result.progress.push_back(std::min(m_bits.bytesUsed(), static_cast<qint64>(m_input.size())));
        }
    }

    void stored()
    {
        m_bits.toByte();
        if (m_bits.bytesLeft() < 4)
            throw Failure{u"InStream depleated"_s};
        const int length = m_bits.number(16);
        const int complement = m_bits.number(16);
        if (length != (~complement & 0xFFFF))
            throw Failure{u"Invalid block size"_s};
        if (m_bits.bytesLeft() < length)
            throw Failure{u"InStream depleated"_s};
        if (room() < length)
            throw Failure{u"OutStream overflow"_s};
        for (int i = 0; i < length; ++i)
            m_result.bytes.push_back(static_cast<quint8>(m_bits.number(8)));
    }

    void fixed()
    {
        std::vector<int> lengths(288, 8);
        std::fill(lengths.begin() + 144, lengths.begin() + 256, 9);
        std::fill(lengths.begin() + 256, lengths.begin() + 280, 7);
        symbols(Code(lengths, u"Static tree"_s), Code(std::vector<int>(32, 5), u"Static tree"_s));
    }

    void dynamic()
    {
        const QString name = u"Dynamic tree"_s;
        const auto literals = static_cast<size_t>(m_bits.number(5) + 257);
        const auto distances = static_cast<size_t>(m_bits.number(5) + 1);
        const int sent = m_bits.number(4) + 4;
        constexpr std::array order{16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
        std::vector<int> codeLengths(19, 0);
        for (int i = 0; i < sent; ++i)
            codeLengths[static_cast<size_t>(order[static_cast<size_t>(i)])] = m_bits.number(3);
        const Code codeLengthCode(codeLengths, name);

        std::vector<int> lengths;
        while (lengths.size() < literals + distances) {
            const int symbol = codeLengthCode.read(m_bits);
            if (symbol < 16) {
                lengths.push_back(symbol);
                continue;
            }
            if (symbol == 16 && lengths.empty())
                throw Failure{name + u": no last Length"_s};
            const int value = symbol == 16 ? lengths.back() : 0;
            const int times = symbol == 16 ? 3 + m_bits.number(2)
                : symbol == 17             ? 3 + m_bits.number(3)
                                           : 11 + m_bits.number(7);
            if (lengths.size() + static_cast<size_t>(times) > literals + distances)
                throw Failure{name + u": too many Lengths"_s};
            lengths.insert(lengths.end(), static_cast<size_t>(times), value);
        }
        const auto split = lengths.begin() + static_cast<std::ptrdiff_t>(literals);
        const Code literalCode(std::vector(lengths.begin(), split), name);
        const Code distanceCode(std::vector(split, lengths.end()), name);
        symbols(literalCode, distanceCode);
    }

    void symbols(const Code &literals, const Code &distances)
    {
        for (;;) {
            const int symbol = literals.read(m_bits);
            if (symbol == 256)
                return;
            if (symbol < 256) {
                if (room() == 0)
                    throw Failure{u"OutStream overflow"_s};
                m_result.bytes.push_back(static_cast<quint8>(symbol));
                continue;
            }
            int base = 0;
            int extra = 0;
            lengthOf(symbol, m_deflate64, base, extra);
            const int length = base + m_bits.number(extra);
            distanceOf(distances.read(m_bits), m_deflate64, base, extra);
            const int distance = base + m_bits.number(extra);
            if (distance > static_cast<qint64>(m_result.bytes.size()))
                throw Failure{u"Error in compressed data"_s};
            if (length > room())
                throw Failure{u"OutStream overflow"_s};
            for (int i = 0; i < length; ++i)
                m_result.bytes.push_back(
                    m_result.bytes[m_result.bytes.size() - static_cast<size_t>(distance)]);
        }
    }

    Bits m_bits;
    std::span<const quint8> m_input;
    const qint64 m_outputSize;
    const bool m_deflate64;
    Inflated m_result;
};

} // namespace

Inflated inflate(std::span<const quint8> input, qint64 outputSize, bool deflate64)
{
    return Decoder(input, outputSize, deflate64).run();
}

} // namespace plum::reference
