#pragma once

#include "search/colour_text.h"
#include "search/picture_file.h"
#include "search/screen_region.h"

#include <QSize>
#include <QString>

#include <functional>
#include <optional>

namespace plum::scenes {

// A screen and a picture to look for on it.
struct Scene
{
    Picture screen;
    Picture picture;
};

inline constexpr Channels tolerance{88, 221, 255};

// The picture's place on the screen as the search under measurement finds it.
using Finder = std::function<std::optional<Position>(const Picture &screen, const Picture &picture)>;

// A piece of the screen itself, whose first match lies in the screen's last tenth.
std::optional<Scene> foundNearTheEnd(const Picture &screen, QSize size, const Finder &find);

// A piece of the screen upside down: what a picture of a program looks like that is not there. Of up to 24
// such pictures from all over the screen, the one that takes longest to look for.
std::optional<Scene> notFound(const Picture &screen, QSize size, const Finder &find);

// Everything matches but one pixel of the picture, the last one that is compared.
Scene oneWrongPixel(QSize screen, QSize picture);

// A flat picture on a flat screen that is spoilt by single pixels: at every place a few of them refute the
// match, each time others.
Scene spoiltScreen(QSize screen, QSize picture);

// Narrow stripes on both; the picture's pattern is broken in its middle.
Scene brokenStripes(QSize screen, QSize picture);

} // namespace plum::scenes
