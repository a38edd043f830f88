#pragma once

#include "search/nearest_miss.h"
#include "search/picture_template.h"

#include <QRect>
#include <QSize>

#include <optional>

namespace plum {

// How well a picture does as something to look for on a screen: what the search compares of it, how often it
// is there, and how much another place is like it.
struct PictureTrial
{
    static constexpr int mostFound = 100;

    QSize size;
    QRect compared; // in the picture's own coordinates; empty when every place passes
    int comparedPixels = 0; // of these: that not every colour passes
    int found = 0; // places that do not overlap, `mostFound` at most
    std::optional<Position> first; // of the trimmed picture's corner in the region, as a search gives it
    std::optional<NearestMiss> nearest; // apart from those places; none when nothing is like the picture
};

PictureTrial tryPicture(const Picture &picture, Channels tolerance, const ScreenRegion &region);

} // namespace plum
