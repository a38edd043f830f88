#pragma once

#include "flight/screen_tile.h"

#include <QPoint>

#include <functional>
#include <optional>
#include <utility>

namespace plum {

class Platform;

// Takes the pictures of a run that is recorded, in a small part of the run's time: where there would be too
// many, some are not taken.
class FlightCamera
{
public:
    using Clock = std::function<qint64()>; // nanoseconds that only grow
    explicit FlightCamera(Platform &platform, Clock clock = &steadyNanoseconds)
        : m_platform(platform)
        , m_clock(std::move(clock))
    {
    }

    void begin();

    // A run has put the pointer there.
    void noteMotion(QPoint to) { m_pointer = to; }

    // `now`: microseconds since the run began. Nothing where there is no time for a picture, or no desktop.
    std::optional<ScreenTile> aroundPointer(qint64 now);
    std::optional<ScreenTile> of(const ScreenRegion &region, qint64 now);

private:
    static qint64 steadyNanoseconds();
    std::optional<ScreenTile> take(qint64 now, const std::function<ScreenTile()> &picture);
    QPoint pointer();

    Platform &m_platform; // its ports are asked for when they are first used: making some takes time
    Clock m_clock;
    std::optional<QPoint> m_pointer;
    qint64 m_spent = 0; // nanoseconds
};

} // namespace plum
