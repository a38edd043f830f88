#pragma once

#include "search/colour_text.h"
#include "search/screen_region.h"

#include <QRect>
#include <QString>

#include <optional>

namespace plum {

class PictureTemplate;

// Hears of searches of the screen.
class SearchObserver
{
public:
    virtual ~SearchObserver() = default;

    // `region` is what was seen, empty where that was nothing, and `picture` what was looked for; both may be
    // read until this returns.
    virtual void colourSearched(
        const QRect &area, const ScreenRegion &region, Channels colour, std::optional<Position> found)
        = 0;
    virtual void pictureSearched(const QRect &area, const QString &path, const ScreenRegion &region,
        const PictureTemplate &picture, std::optional<Position> found)
        = 0;
};

} // namespace plum
