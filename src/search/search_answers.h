#pragma once

#include "search/colour_text.h"
#include "search/screen_region.h"

#include <QRect>
#include <QString>

#include <optional>

namespace plum {

// Knows what searches find, in the place of a screen that is not there. Positions count from the area's top
// left corner.
class SearchAnswers
{
public:
    virtual ~SearchAnswers() = default;

    virtual std::optional<Position> colourAt(const QRect &area, Channels colour) = 0;
    virtual std::optional<Position> pictureAt(const QRect &area, const QString &path) = 0;
};

} // namespace plum
