#include "search/searched_area.h"

#include "search/pixel_kernels.h"

#include <algorithm>

namespace plum {

// `nearEdge` and `farEdge` are those of the trimmed box: the last shift is the region's length less the far
// edge less 2.
SearchedArea::Axis::Axis(
    qint64 regionLength, qint64 nearEdge, qint64 farEdge, qint64 box, qint64 partFrom, qint64 partLength)
    : lead(nearEdge)
{
    const qint64 lastShift = regionLength - farEdge - 2;
    if (lastShift < 0)
        return;
    const qint64 whole = lastShift + box;
    qint64 begin = std::clamp<qint64>(partFrom - nearEdge, 0, whole);
    qint64 end = std::clamp<qint64>(partFrom + partLength - nearEdge, 0, whole);
    if (end == begin)
        begin = end = 0;
    const qint64 kept = std::min(begin, box);
    cutAway = begin - kept;
    before = static_cast<std::size_t>(kept);
    captured = static_cast<std::size_t>(end - begin);
    source = static_cast<std::size_t>(std::max<qint64>(begin + nearEdge - partFrom, 0));
    length = before + captured + static_cast<std::size_t>(std::min(whole - end, box));
    positions = length - static_cast<std::size_t>(box) + 1;
}

bool SearchedArea::setUp(const ScreenRegion &region, const PictureTemplate &picture)
{
    m_region = region;
    const QSize part = region.captured.size;
    m_across = Axis(
        region.width, picture.left(), picture.right(), picture.comparedWidth(), region.part.x, part.width());
    m_down = Axis(region.height, picture.top(), picture.bottom(), picture.comparedHeight(), region.part.y,
        part.height());
    m_made = 0;
    if (m_across.positions == 0 || m_down.positions == 0)
        return false;

    m_stride = m_across.length + PixelKernels::slack;
    for (int channel = 0; channel < channelCount; ++channel) {
        std::vector<quint8> &bytes = m_bytes[static_cast<std::size_t>(channel)];
        if (picture.bounds(channel).isEmpty())
            continue;
        const std::size_t size = m_stride * (m_down.captured + 1);
        if (bytes.size() < size)
            bytes.resize(size);
        std::fill_n(bytes.begin(), m_stride, quint8(0));
        m_rows[static_cast<std::size_t>(channel)].assign(m_down.length, bytes.data());
    }
    return true;
}

Position SearchedArea::inRegion(std::size_t column, std::size_t row) const
{
    // Position 0 stands for itself and for all that were cut away after it.
    const auto along = [](const Axis &axis, std::size_t at) {
        return axis.lead + (at == 0 ? 0 : axis.cutAway + static_cast<qint64>(at));
    };
    return {along(m_across, column), along(m_down, row)};
}

void SearchedArea::makeRows(std::size_t end, const PictureTemplate &picture, const PixelKernels &kernels)
{
    const std::size_t captureWidth = static_cast<std::size_t>(m_region.captured.size.width());
    for (; m_made < end; ++m_made) {
        if (m_made < m_down.before || m_made - m_down.before >= m_down.captured || m_across.captured == 0)
            continue; // the black row
        const std::size_t index = m_made - m_down.before;
        const quint32 *pixels
            = m_region.captured.pixels.data() + (m_down.source + index) * captureWidth + m_across.source;
        for (int channel = 0; channel < channelCount; ++channel) {
            if (picture.bounds(channel).isEmpty())
                continue;
            const std::size_t c = static_cast<std::size_t>(channel);
            quint8 *row = m_bytes[c].data() + m_stride * (index + 1);
            std::fill_n(row, m_across.before, quint8(0));
            kernels.extractChannel(pixels, m_across.captured, channelShifts[c], row + m_across.before);
            std::fill(row + m_across.before + m_across.captured, row + m_stride, quint8(0));
            m_rows[c][m_made] = row;
        }
    }
}

quint32 SearchedArea::pixel(std::size_t column, std::size_t row) const
{
    if (column < m_across.before || column - m_across.before >= m_across.captured || row < m_down.before
        || row - m_down.before >= m_down.captured)
        return 0;
    const std::size_t captureWidth = static_cast<std::size_t>(m_region.captured.size.width());
    return m_region.captured.pixels[(m_down.source + row - m_down.before) * captureWidth + m_across.source
        + column - m_across.before];
}

} // namespace plum
