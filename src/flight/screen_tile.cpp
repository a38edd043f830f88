#include "flight/screen_tile.h"

#include "platform/screen.h"
#include "search/screen_region.h"

#include <QImage>

#include <algorithm>

namespace plum {

namespace {

constexpr quint32 colourBits = 0xffffff;
constexpr quint32 oneMore = 1U << 24;
constexpr quint32 most = 255; // further pixels of an entry

// Black off the desktop, as everywhere.
quint32 pixelOf(const ScreenRegion &region, qint64 x, qint64 y)
{
    const qint64 column = x - region.part.x;
    const qint64 row = y - region.part.y;
    const QSize size = region.captured.size;
    const bool isThere = column >= 0 && row >= 0 && column < size.width() && row < size.height();
    return isThere ? region.captured.pixels[static_cast<std::size_t>(row * size.width() + column)] : 0;
}

} // namespace

ScreenTile::ScreenTile(const Capture &capture)
    : m_size(capture.size)
{
    const auto width = static_cast<std::size_t>(m_size.width());
    for (std::size_t from = 0; from < capture.pixels.size(); from += width)
        addRow(capture.pixels.subspan(from, width));
    m_runs.shrink_to_fit();
}

ScreenTile::ScreenTile(const ScreenRegion &region)
{
    if (region.isEmpty())
        return;
    const auto step = std::max({qint64(1), (region.width + largest.width() - 1) / largest.width(),
        (region.height + largest.height() - 1) / largest.height()});
    m_size = {static_cast<int>((region.width + step - 1) / step),
        static_cast<int>((region.height + step - 1) / step)};
    std::vector<quint32> row(static_cast<std::size_t>(m_size.width()));
    for (int y = 0; y < m_size.height(); ++y) {
        for (int x = 0; x < m_size.width(); ++x)
            row[static_cast<std::size_t>(x)] = pixelOf(region, x * step, y * step);
        addRow(row);
    }
    m_runs.shrink_to_fit();
}

void ScreenTile::addRow(std::span<const quint32> pixels)
{
    for (const quint32 pixel : pixels) {
        const quint32 colour = pixel & colourBits;
        if (!m_runs.empty() && (m_runs.back() & colourBits) == colour && m_runs.back() >> 24 < most)
            m_runs.back() += oneMore;
        else
            m_runs.push_back(colour);
    }
}

QImage ScreenTile::toImage() const
{
    QImage image(m_size, QImage::Format_RGB32);
    int x = 0;
    int y = 0;
    for (const quint32 run : m_runs) {
        for (quint32 left = (run >> 24) + 1; left > 0; --left) {
            image.setPixel(x, y, run | ~colourBits);
            if (++x == m_size.width()) {
                x = 0;
                ++y;
            }
        }
    }
    return image;
}

qsizetype ScreenTile::bytes() const
{
    const size_t bytes = sizeof *this + m_runs.capacity() * sizeof m_runs.front();
    return static_cast<qsizetype>(bytes);
}

} // namespace plum
