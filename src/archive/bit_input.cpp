#include "archive/bit_input.h"

namespace plum {

bool BitInput::more()
{
    if (m_ended)
        return false;
    const std::span unread(m_next, m_end);
    const auto piece = m_input.more(unread);
    if (!piece || piece->size() <= unread.size()) {
        m_readFailed = !piece;
        m_ended = true;
    }
    if (!piece)
        return false;
    m_offset += m_next - m_piece;
    m_piece = piece->data();
    m_next = m_piece;
    m_end = m_piece + piece->size();
    return !m_ended;
}

std::span<const quint8> BitInput::takeBytes(qint64 most)
{
    if (m_count > 0) {
        m_single = static_cast<quint8>(m_bits);
        drop(8);
        return {&m_single, 1};
    }
    if (m_next == m_end && !more())
        return {};
    const std::span<const quint8> bytes(m_next, static_cast<size_t>(std::min<qint64>(most, m_end - m_next)));
    m_next += bytes.size();
    return bytes;
}

} // namespace plum
