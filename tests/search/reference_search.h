#pragma once

#include "search/colour_text.h"
#include "search/picture_file.h"

#include <QString>

namespace plum::reference {

// The screen searches as plain as their rules: pixel by pixel, in scan order, nothing left out and nothing
// kept. `region` holds every pixel of the searched region. What the fast searches must agree with.
QString FindColor(const Picture &region, Channels colour);
QString FindPic(const Picture &region, const Picture &picture, Channels tolerance);

} // namespace plum::reference
