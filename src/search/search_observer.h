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

    virtual void colourSearched(const QRect &area, Channels colour, std::optional<Position> found) = 0;

    // `region` is what was seen and `picture` what was looked for; both may be read until this returns.
    virtual void pictureSearched(const QRect &area, const QString &path, const ScreenRegion &region,
        const PictureTemplate &picture, std::optional<Position> found)
        = 0;
};

} // namespace plum
