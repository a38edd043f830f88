#include "search/find_color_scan.h"

#include "search/pixel_kernels.h"

namespace plum {

std::optional<Position> findColour(const ScreenRegion &region, quint32 colour, const PixelKernels &kernels)
{
    if (region.isEmpty())
        return {};
    const Position part = region.part;
    const qint64 partWidth = region.captured.size.width();
    const qint64 partHeight = region.captured.size.height();
    // Around the captured part everything is black.
    const bool black = colour == 0;
    if (black && (region.captured.isEmpty() || part.y > 0))
        return Position{0, 0};

    const std::span<const quint32> pixels = region.captured.pixels;
    const bool blackBeside = black && partWidth < region.width;
    if (!blackBeside) {
        const std::size_t at = kernels.findColour(pixels.data(), pixels.size(), colour);
        if (at < pixels.size()) {
            const qint64 index = static_cast<qint64>(at);
            return Position{part.x + index % partWidth, part.y + index / partWidth};
        }
    } else if (part.x > 0) {
        return Position{0, 0};
    } else {
        // The black to the right of the first row ends the search.
        const std::size_t at = kernels.findColour(pixels.data(), static_cast<std::size_t>(partWidth), colour);
        return Position{static_cast<qint64>(at), 0};
    }
    if (black && partHeight < region.height)
        return Position{0, partHeight};
    return {};
}

} // namespace plum
