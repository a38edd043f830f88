#include "search/witnesses.h"

#include <algorithm>

namespace plum {

namespace {

quint64 reversed(quint64 bits)
{
    bits = (bits >> 1 & 0x5555555555555555) | (bits & 0x5555555555555555) << 1;
    bits = (bits >> 2 & 0x3333333333333333) | (bits & 0x3333333333333333) << 2;
    bits = (bits >> 4 & 0x0f0f0f0f0f0f0f0f) | (bits & 0x0f0f0f0f0f0f0f0f) << 4;
    return __builtin_bswap64(bits);
}

// The positions of a block, all of `row`, whose box pixel over the witness does not take its value.
quint64 turnedAway(const Witnesses::Witness &witness, std::size_t first, std::size_t row,
    const SearchedArea &area, const PictureTemplate &picture, const PixelKernels &kernels)
{
    const std::size_t width = static_cast<std::size_t>(picture.comparedWidth());
    if (witness.row < row || witness.row - row >= static_cast<std::size_t>(picture.comparedHeight())
        || witness.column < first)
        return 0;
    // Position first + n has the box's column `last` - n over the witness.
    const std::size_t last = witness.column - first;
    const std::size_t from = last < PixelKernels::blockSize ? 0 : last - (PixelKernels::blockSize - 1);
    if (from >= width)
        return 0;
    const auto &bounds = picture.bounds(witness.channel);
    const std::size_t at = (witness.row - row) * picture.stride() + from;
    const quint8 value = area.row(witness.channel, witness.row)[witness.column];
    quint64 failing = ~kernels.boundsHolding(value, bounds.low.data() + at, bounds.span.data() + at);
    const std::size_t columns = std::min(last + 1, width) - from;
    if (columns < PixelKernels::blockSize)
        failing &= (quint64(1) << columns) - 1;
    return reversed(failing) >> (PixelKernels::blockSize - 1 - (last - from));
}

} // namespace

void Witnesses::reset(std::size_t blocks)
{
    m_blocks.assign(blocks, {});
}

void Witnesses::apply(Survivors &block, std::size_t row, const SearchedArea &area,
    const PictureTemplate &picture, const PixelKernels &kernels) const
{
    const Kept &kept = m_blocks[block.first / PixelKernels::blockSize];
    const std::size_t count = std::min(kept.count, keptForBlock);
    for (std::size_t i = 0; i < count && block.bits != 0; ++i)
        block.bits &= ~turnedAway(kept.witnesses[i], block.first, row, area, picture, kernels);
}

void Witnesses::add(const Witness &witness, Survivors &block, std::size_t row, const SearchedArea &area,
    const PictureTemplate &picture, const PixelKernels &kernels)
{
    Kept &kept = m_blocks[block.first / PixelKernels::blockSize];
    kept.witnesses[kept.count++ % keptForBlock] = witness;
    block.bits &= ~turnedAway(witness, block.first, row, area, picture, kernels);
}

} // namespace plum
