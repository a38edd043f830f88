#include "search/find_pic_scan.h"

#include "platform/stop_signal.h"

#include <bit>

namespace plum {

namespace {

// A pixel that failed so often becomes a test for all further positions; so many pixels may.
constexpr int failuresToLearn = 16;
constexpr std::size_t learnedTests = 16;

} // namespace

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

    m_tests = decidingPixels(m_area, picture);
    m_mostTests = m_tests.size() + learnedTests;
    m_tallies = {};
    m_firstRow = 0;
    m_witnesses.reset((m_area.positionsAcross() - 1) / PixelKernels::blockSize + 1);
    for (std::size_t row = 0; row < m_area.positionsDown(); ++row) {
        if (m_stop && m_stop->isRaised())
            return {};
        m_area.makeRows(row + static_cast<std::size_t>(picture.comparedHeight()), picture, m_kernels);
        if (const std::optional<std::size_t> column = hitInRow(picture, row))
            return m_area.inRegion(*column, row);
    }
    return {};
}

RowTest FindPicScan::rowTest(const PixelTest &test, std::size_t row) const
{
    return {m_area.row(test.channel, row + test.row) + test.column, test.low, test.span};
}

std::optional<std::size_t> FindPicScan::hitInRow(const PictureTemplate &picture, std::size_t row)
{
    m_rowTests.clear();
    for (const PixelTest &test : m_tests)
        m_rowTests.push_back(rowTest(test, row));

    const std::size_t end = m_area.positionsAcross();
    for (std::size_t from = 0; from < end;) {
        const Survivors block = m_kernels.nextSurvivors(m_rowTests, from, end);
        if (const std::optional<std::size_t> column = hitInBlock(picture, block, row))
            return column;
        from = block.first + PixelKernels::blockSize;
        if (m_rowTests.size() < m_tests.size())
            m_rowTests.push_back(rowTest(m_tests.back(), row));
    }
    return {};
}

std::optional<std::size_t> FindPicScan::hitInBlock(
    const PictureTemplate &picture, Survivors block, std::size_t row)
{
    if (block.bits != 0)
        m_witnesses.apply(block, row, m_area, picture, m_kernels);
    while (block.bits != 0) {
        const std::size_t column = block.first + static_cast<std::size_t>(std::countr_zero(block.bits));
        const std::optional<Failure> failure = compareAll(picture, column, row);
        if (!failure)
            return column;
        block.bits &= block.bits - 1;
        m_witnesses.add({failure->channel, column + failure->column, row + failure->row}, block, row, m_area,
            picture, m_kernels);
        learnFrom(*failure, picture);
    }
    return {};
}

// The comparison begins in the row that failed last, which is likely to fail again, and goes on from the
// bottom: a witness that is found there stays under the picture for most of the rows to come.
std::optional<FindPicScan::Failure> FindPicScan::compareAll(
    const PictureTemplate &picture, std::size_t column, std::size_t row)
{
    const std::size_t height = static_cast<std::size_t>(picture.comparedHeight());
    for (std::size_t i = 0; i <= height; ++i) {
        const std::size_t boxRow = i == 0 ? m_firstRow : height - i;
        for (int channel = 0; channel < channelCount; ++channel) {
            const auto &bounds = picture.bounds(channel);
            if (bounds.isEmpty())
                continue;
            const std::size_t at = boxRow * picture.stride();
            const std::size_t failure = m_kernels.firstFailure(m_area.row(channel, row + boxRow) + column,
                bounds.low.data() + at, bounds.span.data() + at, picture.stride());
            if (failure < picture.stride()) {
                m_firstRow = boxRow;
                return Failure{channel, failure, boxRow};
            }
        }
    }
    return {};
}

void FindPicScan::learnFrom(const Failure &failure, const PictureTemplate &picture)
{
    const std::size_t pixel = failure.row * picture.stride() + failure.column;
    Tally &tally = m_tallies[pixel % m_tallies.size()];
    if (tally.pixel != pixel)
        tally = {pixel, 0};
    // Only one test is added in a block: the tests of the row take it up before the next.
    if (++tally.failures < failuresToLearn || m_tests.size() >= m_mostTests
        || m_tests.size() > m_rowTests.size())
        return;
    m_tests.push_back(testAt(picture, failure.channel, pixel));
    tally.failures = 0;
}

} // namespace plum
