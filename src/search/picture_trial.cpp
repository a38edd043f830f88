#include "search/picture_trial.h"

#include "search/find_pic_scan.h"
#include "search/pixel_kernels.h"

#include <algorithm>

namespace plum {

namespace {

// Pixels of which at least one channel can fail.
int decidingPixelCount(const PictureTemplate &picture)
{
    int deciding = 0;
    for (int row = 0; row < picture.comparedHeight(); ++row) {
        for (int column = 0; column < picture.comparedWidth(); ++column) {
            const std::size_t at
                = static_cast<std::size_t>(row) * picture.stride() + static_cast<std::size_t>(column);
            bool decides = false;
            for (int channel = 0; channel < channelCount; ++channel)
                decides = decides
                    || (!picture.bounds(channel).isEmpty() && picture.bounds(channel).span[at] < 255);
            deciding += decides;
        }
    }
    return deciding;
}

// A copy of a region in which places can be made to be found no more.
class MaskedRegion
{
public:
    explicit MaskedRegion(const ScreenRegion &region)
        : m_region(region)
        , m_pixels(region.captured.pixels.begin(), region.captured.pixels.end())
    {
        m_region.captured.pixels = m_pixels;
    }

    const ScreenRegion &region() const { return m_region; }

    // Gives the place the colours that are farthest from the picture's own.
    void mask(Position corner, const Picture &picture, const PictureTemplate &compared)
    {
        const QSize size = m_region.captured.size;
        for (int row = 0; row < compared.comparedHeight(); ++row) {
            for (int column = 0; column < compared.comparedWidth(); ++column) {
                const qint64 x = corner.x - m_region.part.x + column;
                const qint64 y = corner.y - m_region.part.y + row;
                if (x < 0 || y < 0 || x >= size.width() || y >= size.height())
                    continue;
                const quint32 meant = picture.at(compared.left() + column, compared.top() + row);
                m_pixels[static_cast<std::size_t>(y * size.width() + x)] = farthest(meant);
            }
        }
    }

private:
    static quint32 farthest(quint32 colour)
    {
        quint32 other = 0;
        for (const unsigned shift : channelShifts)
            other |= ((colour >> shift & 0xff) < 0x80 ? 0xffU : 0U) << shift;
        return other;
    }

    ScreenRegion m_region;
    std::vector<quint32> m_pixels;
};

} // namespace

PictureTrial tryPicture(const Picture &picture, Channels tolerance, const ScreenRegion &region)
{
    const PictureTemplate compared(picture, tolerance);
    PictureTrial trial{.size = {picture.width, picture.height}, .compared = {}, .first = {}, .nearest = {}};
    if (compared.comparedWidth() <= 0 || compared.comparedHeight() <= 0)
        return trial;
    trial.compared = {compared.left(), compared.top(), compared.comparedWidth(), compared.comparedHeight()};
    trial.comparedPixels = decidingPixelCount(compared);

    MaskedRegion left(region);
    FindPicScan scan(pixelKernels());
    while (trial.found < PictureTrial::mostFound) {
        const std::optional<Position> place = scan.find(left.region(), compared);
        if (!place)
            break;
        if (!trial.first)
            trial.first = place;
        ++trial.found;
        left.mask(*place, picture, compared);
    }
    if (trial.found < PictureTrial::mostFound)
        trial.nearest = findNearestMiss(left.region(), compared);
    return trial;
}

} // namespace plum
