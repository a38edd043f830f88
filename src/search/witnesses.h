#pragma once

#include "search/pixel_kernels.h"
#include "search/searched_area.h"

#include <array>
#include <vector>

namespace plum {

// Pixels of the area that turned positions of the picture away. Each lies under many positions, so it is
// likely to turn their neighbours away too, those beside it at once and those of the next rows later on. The
// last few are kept for every block of positions.
class Witnesses
{
public:
    struct Witness
    {
        int channel = 0;
        std::size_t column = 0; // of the area
        std::size_t row = 0;
    };

    // Forgets everything; makes room for `blocks` blocks.
    void reset(std::size_t blocks);

    // Takes the positions out of `block`, of one row, that the block's witnesses turn away.
    void apply(Survivors &block, std::size_t row, const SearchedArea &area, const PictureTemplate &picture,
        const PixelKernels &kernels) const;

    // Keeps a new witness and applies it. A block forgets its oldest one for it.
    void add(const Witness &witness, Survivors &block, std::size_t row, const SearchedArea &area,
        const PictureTemplate &picture, const PixelKernels &kernels);

private:
    static constexpr std::size_t keptForBlock = 24;

    struct Kept
    {
        std::array<Witness, keptForBlock> witnesses;
        std::size_t count = 0; // all that ever were
    };

    std::vector<Kept> m_blocks;
};

} // namespace plum
