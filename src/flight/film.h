#pragma once

#include "flight/screen_tile.h"

#include <deque>

namespace plum {

// The pictures of one run, the newest ones, in bounded memory.
class Film
{
public:
    static constexpr qsizetype mostBytes = qsizetype(12) << 20;

    using Id = qint64; // 0: no picture

    // A picture that is like the last one is that one.
    Id add(ScreenTile tile);

    // In the place of picture `id` if it is the last one.
    Id replace(Id id, ScreenTile tile);

    // Null when there is none, or when it was given up for newer ones.
    const ScreenTile *find(Id id) const;

    void clear();
    qsizetype bytes() const { return m_bytes; }
    bool isEmpty() const { return m_tiles.empty(); }

private:
    Id last() const { return m_first + static_cast<Id>(m_tiles.size()) - 1; }

    std::deque<ScreenTile> m_tiles;
    Id m_first = 1;
    qsizetype m_bytes = 0;
};

} // namespace plum
