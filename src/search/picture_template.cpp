#include "search/picture_template.h"

#include "search/pixel_kernels.h"

#include <algorithm>

namespace plum {

namespace {

int channelOf(quint32 pixel, int channel)
{
    return static_cast<int>(pixel >> channelShifts[static_cast<std::size_t>(channel)] & 0xff);
}

// A pixel is foreground only where all of its channels differ from the background's.
bool isForeground(quint32 pixel, quint32 background)
{
    for (int channel = 0; channel < channelCount; ++channel) {
        if (channelOf(pixel, channel) == channelOf(background, channel))
            return false;
    }
    return true;
}

bool cornersAreEqual(const Picture &picture)
{
    const int lastColumn = picture.width - 1;
    const int lastRow = picture.height - 1;
    const quint32 corner = picture.at(0, 0);
    return picture.at(lastColumn, 0) == corner && picture.at(0, lastRow) == corner
        && picture.at(lastColumn, lastRow) == corner;
}

// The rule that decides between the two comparisons. An untrimmed picture counts as having no background.
bool usesTransparency(bool trimmed, quint32 background)
{
    if (!trimmed)
        return false;
    const int blue = channelOf(background, 0);
    const int evenness = channelOf(background, 2) == channelOf(background, 1) ? -1 : 0;
    return evenness != blue;
}

} // namespace

PictureTemplate::PictureTemplate(const Picture &picture, Channels tolerance)
{
    m_trimmed = cornersAreEqual(picture);
    if (m_trimmed) {
        m_background = picture.at(0, 0);
        trim(picture);
    } else {
        m_right = picture.width;
        m_bottom = picture.height;
    }
    if (comparedWidth() <= 0 || comparedHeight() <= 0)
        return;

    const std::size_t units
        = (static_cast<std::size_t>(comparedWidth()) + PixelKernels::rowUnit - 1) / PixelKernels::rowUnit;
    m_stride = units * PixelKernels::rowUnit;
    const bool transparent = usesTransparency(m_trimmed, m_background);
    setBounds(picture, 0, tolerance.blue, transparent);
    setBounds(picture, 1, tolerance.green, transparent);
    setBounds(picture, 2, tolerance.red, transparent);
}

// A picture without any foreground leaves the box 0,0,0,0; one whose right edge is not found, right = 0.
void PictureTemplate::trim(const Picture &picture)
{
    const auto foreground
        = [&](int column, int row) { return isForeground(picture.at(column, row), m_background); };

    const auto first = std::ranges::find_if(
        picture.pixels, [&](quint32 pixel) { return isForeground(pixel, m_background); });
    if (first == picture.pixels.end())
        return;
    // Kept: the left edge is the column of the first foreground pixel, not of the leftmost one.
    const qint64 index = first - picture.pixels.begin();
    m_left = static_cast<int>(index % picture.width);
    m_top = static_cast<int>(index / picture.width);

    const auto rowHasForeground = [&](int row) {
        for (int column = picture.width - 1; column >= m_left; --column) {
            if (foreground(column, row))
                return true;
        }
        return false;
    };
    m_bottom = picture.height - 1;
    while (!rowHasForeground(m_bottom))
        --m_bottom;

    // Kept: the column goes down to the top edge and the row to the left edge, the wrong way round.
    for (int column = picture.width - 1; column >= m_top; --column) {
        for (int row = picture.height - 1; row >= m_left; --row) {
            if (foreground(column, row)) {
                m_right = column;
                return;
            }
        }
    }
}

void PictureTemplate::setBounds(const Picture &picture, int channel, int tolerance, bool transparent)
{
    ChannelBounds bounds;
    const std::size_t size = m_stride * static_cast<std::size_t>(comparedHeight()) + PixelKernels::blockSize;
    bounds.low.resize(size, 0);
    bounds.span.resize(size, 255);
    const int background = channelOf(m_background, channel);
    bool everythingPasses = true;
    for (int row = 0; row < comparedHeight(); ++row) {
        std::size_t at = m_stride * static_cast<std::size_t>(row);
        for (int column = 0; column < comparedWidth(); ++column, ++at) {
            const int value = channelOf(picture.at(m_left + column, m_top + row), channel);
            const int low = std::max(value - tolerance, 0);
            const bool noUpperBound = transparent && value == background;
            const int high = noUpperBound ? 255 : std::min(value + tolerance, 255);
            bounds.low[at] = static_cast<quint8>(low);
            bounds.span[at] = static_cast<quint8>(high - low);
            everythingPasses = everythingPasses && high - low == 255;
        }
    }
    if (!everythingPasses)
        m_bounds[static_cast<std::size_t>(channel)] = std::move(bounds);
}

std::size_t PictureTemplate::cost() const
{
    std::size_t bytes = sizeof(*this);
    for (const ChannelBounds &bounds : m_bounds)
        bytes += bounds.low.size() + bounds.span.size();
    return bytes;
}

} // namespace plum
