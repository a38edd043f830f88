#pragma once

#include "search/screen_region.h"

#include <array>
#include <vector>

namespace plum {

class PictureTemplate;
class StopSignal;

// Where a picture that was not found is nearly seen.
struct NearestMiss
{
    struct Pixel
    {
        int column = 0; // of the picture
        int row = 0;
        bool operator==(const Pixel &) const = default;
    };

    static constexpr std::size_t mostNamed = 12;

    Position at = {}; // of the trimmed picture's top left corner in the region, as a search gives it
    int compared = 0; // pixels
    int differing = 0; // of these; at least 1
    std::array<int, 3> byChannel{}; // how many differ in blue, green, red
    std::vector<Pixel> first = {}; // of those that differ, row after row, `mostNamed` at most
};

// The place with the fewest pixels that differ. Places where a sample of the pixels says that more than half
// do are not looked at further, so where nothing like the picture is seen there is none. Nor is there one
// once `stop` is raised: a picture of much the same colour as the screen may take seconds.
std::optional<NearestMiss> findNearestMiss(
    const ScreenRegion &region, const PictureTemplate &picture, const StopSignal *stop = nullptr);

} // namespace plum
