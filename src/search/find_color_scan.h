#pragma once

#include "search/screen_region.h"

namespace plum {

struct PixelKernels;

// The first pixel of exactly `colour` (red << 16 | green << 8 | blue), row after row from the top, each row
// from the left.
std::optional<Position> findColour(const ScreenRegion &region, quint32 colour, const PixelKernels &kernels);

} // namespace plum
