#pragma once

#include "search/searched_area.h"

#include <vector>

namespace plum {

// One channel of one pixel of a picture's compared box.
struct PixelTest
{
    int channel = 0;
    std::size_t column = 0;
    std::size_t row = 0;
    quint8 low = 0;
    quint8 span = 255;

    bool passes(quint8 value) const { return static_cast<quint8>(value - low) <= span; }
};

// The test at one place of a channel's bounds.
PixelTest testAt(const PictureTemplate &picture, int channel, std::size_t at);

// The few tests of a picture that, one after another, turn away most positions of this screen. A position
// that fails any test of the picture is no hit, so the order in which tests are made is free; which ones
// come first decides the speed. They are chosen by what a small sample of the screen's positions fails.
std::vector<PixelTest> decidingPixels(const SearchedArea &area, const PictureTemplate &picture);

} // namespace plum
