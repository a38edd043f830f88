#pragma once

#include "search/deciding_pixels.h"
#include "search/searched_area.h"
#include "search/witnesses.h"

#include <array>

namespace plum {

class StopSignal;

// Searches regions of the screen for a picture. The first hit in scan order counts: the topmost row, in it
// the leftmost column. The memory of the scan is kept from search to search.
//
// Positions are tried in blocks. A few chosen pixels turn nearly all of them away; what is left meets the
// witnesses of earlier failures, and only then the whole picture.
class FindPicScan
{
public:
    // A search that `stop` interrupts finds nothing.
    explicit FindPicScan(const PixelKernels &kernels, const StopSignal *stop = nullptr)
        : m_kernels(kernels)
        , m_stop(stop)
    {
    }

    // The top left corner of the trimmed picture in the region.
    std::optional<Position> find(const ScreenRegion &region, const PictureTemplate &picture);

private:
    // The first channel byte of the box that fails at a position.
    struct Failure
    {
        int channel = 0;
        std::size_t column = 0; // of the box
        std::size_t row = 0;
    };

    // How often a pixel of the box failed lately.
    struct Tally
    {
        std::size_t pixel = 0;
        int failures = 0;
    };

    std::optional<std::size_t> hitInRow(const PictureTemplate &picture, std::size_t row);
    std::optional<std::size_t> hitInBlock(const PictureTemplate &picture, Survivors block, std::size_t row);
    std::optional<Failure> compareAll(const PictureTemplate &picture, std::size_t column, std::size_t row);
    void learnFrom(const Failure &failure, const PictureTemplate &picture);
    RowTest rowTest(const PixelTest &test, std::size_t row) const;

    const PixelKernels &m_kernels;
    const StopSignal *m_stop;
    SearchedArea m_area;
    Witnesses m_witnesses;
    std::vector<PixelTest> m_tests;
    std::vector<RowTest> m_rowTests; // the same for the row that is searched
    std::size_t m_mostTests = 0;
    std::array<Tally, 64> m_tallies;
    std::size_t m_firstRow = 0; // of the box: where the comparison of a whole position begins
};

} // namespace plum
