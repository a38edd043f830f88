#include "search/screen_region.h"

#include <algorithm>

namespace plum {

namespace {

// What two stretches have in common; empty when `end` is not above `begin`.
struct Stretch
{
    qint64 begin;
    qint64 end;

    Stretch common(Stretch other) const { return {std::max(begin, other.begin), std::min(end, other.end)}; }
    bool isEmpty() const { return end <= begin; }
    int length() const { return static_cast<int>(end - begin); }
};

} // namespace

std::optional<ScreenRegion> captureRegion(
    Screen &screen, qint32 x, qint32 y, qint32 width, qint32 height, LayeredWindows layered)
{
    const QRect desktop = screen.desktop();
    if (desktop.isEmpty())
        return {};
    ScreenRegion region{width, height, {}, {}};
    if (region.isEmpty())
        return region;

    const Stretch columns
        = Stretch{x, qint64(x) + width}.common({desktop.x(), qint64(desktop.x()) + desktop.width()});
    const Stretch rows
        = Stretch{y, qint64(y) + height}.common({desktop.y(), qint64(desktop.y()) + desktop.height()});
    if (columns.isEmpty() || rows.isEmpty())
        return region;

    const QRect part(
        static_cast<int>(columns.begin), static_cast<int>(rows.begin), columns.length(), rows.length());
    region.part = {columns.begin - x, rows.begin - y};
    region.captured = layered == LayeredWindows::Seen ? screen.capture(part) : screen.capturePlainly(part);
    if (region.captured.isEmpty() || region.captured.size != part.size())
        return {};
    return region;
}

} // namespace plum
