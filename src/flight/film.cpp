#include "flight/film.h"

#include <utility>

namespace plum {

Film::Id Film::add(ScreenTile tile)
{
    if (m_tiles.empty() || m_tiles.back() != tile) {
        m_bytes += tile.bytes();
        m_tiles.push_back(std::move(tile));
    }
    while (m_bytes > mostBytes && m_tiles.size() > 1) {
        m_bytes -= m_tiles.front().bytes();
        m_tiles.pop_front();
        ++m_first;
    }
    return last();
}

Film::Id Film::replace(Id id, ScreenTile tile)
{
    if (id == last() && !m_tiles.empty()) {
        m_bytes -= m_tiles.back().bytes();
        m_tiles.pop_back();
    }
    return add(std::move(tile));
}

const ScreenTile *Film::find(Id id) const
{
    return id >= m_first && id <= last() && !m_tiles.empty()
        ? &m_tiles[static_cast<std::size_t>(id - m_first)]
        : nullptr;
}

void Film::clear()
{
    m_first += static_cast<Id>(m_tiles.size());
    m_tiles.clear();
    m_bytes = 0;
}

} // namespace plum
