#pragma once

#include "commands/searched_area.h"
#include "commands/test_selection.h"

#include <array>

namespace plum {

struct PixelKernels;

// Searches regions of the screen for a picture. The first hit in scan order counts: the topmost row, in it
// the leftmost column. The memory of the scan is kept from search to search.
class FindPicScan
{
public:
    explicit FindPicScan(const PixelKernels &kernels)
        : m_kernels(kernels)
    {
    }

    // The top left corner of the trimmed picture in the region.
    std::optional<Position> find(const ScreenRegion &region, const PictureTemplate &picture);

private:
    // A pixel of the area that turned a position away. It is likely to turn the next ones away too.
    struct Witness
    {
        int channel = 0;
        std::size_t column = 0;
        std::size_t row = 0;
    };

    bool isHit(const PictureTemplate &picture, std::size_t column, std::size_t row);
    bool isRefuted(const Witness &witness, const PictureTemplate &picture, std::size_t column, std::size_t row) const;

    const PixelKernels &m_kernels;
    SearchedArea m_area;
    std::array<Witness, 8> m_witnesses;
    std::size_t m_lastWitness = 0;
    std::size_t m_firstRow = 0; // of the box: where the comparison of a whole position begins
};

} // namespace plum
