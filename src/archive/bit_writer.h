#pragma once

#include <QByteArray>

namespace plum {

// Bytes out of bits, the lowest first.
class BitWriter
{
public:
    // The `count` low bits of `value`, 16 at most.
    void put(quint32 value, int count)
    {
        m_bits |= value << m_count;
        for (m_count += count; m_count >= 8; m_count -= 8, m_bits >>= 8)
            m_bytes += static_cast<char>(m_bits);
    }

    void alignToByte()
    {
        if (m_count > 0)
            put(0, 8 - m_count);
    }

    // Only on a byte boundary.
    void append(QByteArrayView bytes) { m_bytes += bytes; }

    // Everything so far; what is missing to a whole byte is zero.
    QByteArray finish()
    {
        alignToByte();
        return m_bytes;
    }

private:
    QByteArray m_bytes;
    quint32 m_bits = 0;
    int m_count = 0;
};

} // namespace plum
