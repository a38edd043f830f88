#include "commands/find_pic_scan.h"

#include "commands/pixel_kernels.h"

#include <bit>

namespace plum {

std::optional<Position> FindPicScan::find(const ScreenRegion &region, const PictureTemplate &picture)
{
    if (region.isEmpty())
        return {};
    if (picture.comparedWidth() <= 0 || picture.comparedHeight() <= 0) {
        const bool hasShift
            = region.width - picture.right() - 2 >= 0 && region.height - picture.bottom() - 2 >= 0;
        return hasShift ? std::optional(Position{picture.left(), picture.top()}) : std::nullopt;
    }
    if (!m_area.setUp(region, picture))
        return {};

    const std::vector<PixelTest> tests = selectTests(m_area, picture);
    std::vector<RowTest> rowTests(tests.size());
    m_witnesses = {};
    m_firstRow = 0;

    const std::size_t across = m_area.positionsAcross();
    for (std::size_t row = 0; row < m_area.positionsDown(); ++row) {
        m_area.makeRows(row + static_cast<std::size_t>(picture.comparedHeight()), picture, m_kernels);
        for (std::size_t i = 0; i < tests.size(); ++i) {
            const PixelTest &test = tests[i];
            rowTests[i] = {m_area.row(test.channel, row + test.row) + test.column, test.low, test.span};
        }
        for (std::size_t from = 0; from < across; from += PixelKernels::blockSize) {
            Survivors block = m_kernels.nextSurvivors(rowTests, from, across);
            for (; block.bits != 0; block.bits &= block.bits - 1) {
                const std::size_t column = block.first + static_cast<std::size_t>(std::countr_zero(block.bits));
                if (isHit(picture, column, row))
                    return m_area.inRegion(column, row);
            }
            from = block.first;
        }
    }
    return {};
}

bool FindPicScan::isRefuted(
    const Witness &witness, const PictureTemplate &picture, std::size_t column, std::size_t row) const
{
    // Differences below zero become large, so that one comparison answers for both sides.
    const std::size_t boxColumn = witness.column - column;
    const std::size_t boxRow = witness.row - row;
    const auto &bounds = picture.bounds(witness.channel);
    if (boxColumn >= static_cast<std::size_t>(picture.comparedWidth())
        || boxRow >= static_cast<std::size_t>(picture.comparedHeight()) || bounds.isEmpty())
        return false;
    const quint8 value = m_area.row(witness.channel, witness.row)[witness.column];
    const std::size_t at = boxRow * picture.stride() + boxColumn;
    return static_cast<quint8>(value - bounds.low[at]) > bounds.span[at];
}

bool FindPicScan::isHit(const PictureTemplate &picture, std::size_t column, std::size_t row)
{
    for (std::size_t i = 0; i < m_witnesses.size(); ++i) {
        if (isRefuted(m_witnesses[(m_lastWitness + i) % m_witnesses.size()], picture, column, row))
            return false;
    }
    const std::size_t height = static_cast<std::size_t>(picture.comparedHeight());
    for (std::size_t i = 0; i < height; ++i) {
        const std::size_t boxRow = (m_firstRow + i) % height;
        for (int channel = 0; channel < channelCount; ++channel) {
            const auto &bounds = picture.bounds(channel);
            if (bounds.isEmpty())
                continue;
            const std::size_t at = boxRow * picture.stride();
            const std::size_t failure = m_kernels.firstFailure(m_area.row(channel, row + boxRow) + column,
                bounds.low.data() + at, bounds.span.data() + at, picture.stride());
            if (failure < picture.stride()) {
                m_lastWitness = (m_lastWitness + m_witnesses.size() - 1) % m_witnesses.size();
                m_witnesses[m_lastWitness] = {channel, column + failure, row + boxRow};
                m_firstRow = boxRow;
                return false;
            }
        }
    }
    return true;
}

} // namespace plum
