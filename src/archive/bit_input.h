#pragma once

#include "archive/inflate.h"

#include <QtEndian>

#include <algorithm>

namespace plum {

// The input of a decoder as a sequence of bits, lowest first, with zero bits without end behind it.
class BitInput
{
public:
    BitInput(InflateInput &input, qint64 size)
        : m_input(input)
        , m_size(size)
    {
    }

    // At least this many bits are there after fill().
    static constexpr int filled = 56;

    void fill()
    {
        while (m_count < filled) {
            quint64 byte = 0;
            if (m_next != m_end || more())
                byte = *m_next++;
            else
                ++m_zeros;
            m_bits |= byte << m_count;
            m_count += 8;
        }
    }

    // The bits that are there, the next one lowest.
    quint64 bits() const { return m_bits; }

    void drop(int bits)
    {
        m_bits >>= bits;
        m_count -= bits;
    }

    // `bits` bits, 32 at most.
    quint32 take(int bits)
    {
        fill();
        const auto value = static_cast<quint32>(m_bits & ((quint64{1} << bits) - 1));
        drop(bits);
        return value;
    }

    void alignToByte() { drop(m_count % 8); }

    // Bytes of which at least one bit was used; counts the zeros behind the end too.
    qint64 position() const { return m_offset + (m_next - m_piece) + m_zeros - m_count / 8; }

    // Bytes not used yet; at the earliest 0.
    qint64 remaining() const { return std::max<qint64>(m_size - position(), 0); }

    // The next bytes in one piece, `most` at most and not empty unless reading fails. To be called on a byte
    // boundary with as many bytes remaining.
    std::span<const quint8> takeBytes(qint64 most);

    bool readFailed() const { return m_readFailed; }

    // The state in the hands of the inner loop, which loads eight bytes at a time.
    struct Registers
    {
        const quint8 *next;
        quint64 bits; // above `count`, those of the bytes from `next` on
        quint32 count; // its lowest 8 bits are; what is above them has no meaning

        // At least 56 bits are there afterwards. Reads 8 bytes, takes at most 7.
        void fill()
        {
            bits |= qFromLittleEndian<quint64>(next) << (count & 63);
            next += 7 - (count >> 3 & 7);
            count |= 56;
        }

        // Takes as many bits as the lowest 8 bits of `entry` say, 63 at most.
        void drop(quint32 entry)
        {
            bits >>= entry & 63;
            count -= entry;
        }
    };

    // Makes sure that `bytes` bytes can be read from the piece in hand, if the input has as many left.
    bool atHand(qint64 bytes) { return m_end - m_next >= bytes || (more() && m_end - m_next >= bytes); }

    const quint8 *pieceEnd() const { return m_end; }
    Registers registers() const { return {m_next, m_bits, static_cast<quint32>(m_count)}; }
    void setRegisters(const Registers &state)
    {
        m_next = state.next;
        m_count = static_cast<int>(state.count & 0xFF);
        m_bits = state.bits & ((quint64{1} << m_count) - 1);
    }

private:
    // Gets the next piece; false at the end.
    bool more();

    InflateInput &m_input;
    const qint64 m_size;
    const quint8 *m_piece = nullptr;
    const quint8 *m_next = nullptr;
    const quint8 *m_end = nullptr;
    qint64 m_offset = 0; // of the piece in the input
    qint64 m_zeros = 0; // bytes made up behind the end
    quint64 m_bits = 0;
    int m_count = 0;
    bool m_ended = false;
    bool m_readFailed = false;
    quint8 m_single = 0; // a byte on its way from the bits to takeBytes()
};

} // namespace plum
