#pragma once

#include "search/picture_template.h"
#include "search/screen_region.h"

#include <vector>

namespace plum {

struct PixelKernels;

// The part of a region that a picture's compared box can cover, as rows of channel bytes. The black around
// the captured pixels is cut down to the box's size: a box that lies wholly in it gives the same answer
// everywhere, and of those places only the first matters. The memory is kept from search to search.
class SearchedArea
{
public:
    // Sets the area up; false when the region leaves no position to try. `picture` must have something to
    // compare.
    bool setUp(const ScreenRegion &region, const PictureTemplate &picture);

    // Positions of the box to try, from 0,0.
    std::size_t positionsAcross() const { return m_across.positions; }
    std::size_t positionsDown() const { return m_down.positions; }

    // The position in the region that one of these positions stands for.
    Position inRegion(std::size_t column, std::size_t row) const;

    // Makes the channel bytes of the rows before `end`; rows that are there already cost nothing.
    void makeRows(std::size_t end, const PictureTemplate &picture, const PixelKernels &kernels);

    // A row that was made, with `PixelKernels::slack` more bytes behind it.
    const quint8 *row(int channel, std::size_t row) const
    {
        return m_rows[static_cast<std::size_t>(channel)][row];
    }

    // One pixel straight from the capture.
    quint32 pixel(std::size_t column, std::size_t row) const;

private:
    // How the area's columns or rows come from the region's.
    struct Axis
    {
        Axis() = default;
        Axis(qint64 regionLength, qint64 nearEdge, qint64 farEdge, qint64 box, qint64 partFrom,
            qint64 partLength);

        std::size_t positions = 0;
        std::size_t length = 0;
        std::size_t before = 0; // black kept in front of the captured part
        std::size_t captured = 0;
        std::size_t source = 0; // where that begins in the capture
        qint64 cutAway = 0; // black taken out of the front
        qint64 lead = 0; // the region's first columns or rows, which are never looked at
    };

    ScreenRegion m_region;
    Axis m_across;
    Axis m_down;
    std::size_t m_stride = 0;
    std::size_t m_made = 0;
    std::array<std::vector<quint8>, channelCount> m_bytes; // the captured rows, and one black row in front
    std::array<std::vector<const quint8 *>, channelCount> m_rows;
};

} // namespace plum
