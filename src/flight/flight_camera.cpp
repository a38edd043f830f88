#include "flight/flight_camera.h"

#include "platform/platform.h"
#include "platform/pointer.h"
#include "platform/screen.h"
#include "search/screen_region.h"

#include <chrono>

namespace plum {

namespace {

// Of a run's time; a little more than it, so that a short run has pictures, too.
constexpr qint64 share = 30;
constexpr qint64 inAdvance = 5'000'000; // nanoseconds

} // namespace

qint64 FlightCamera::steadyNanoseconds()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}

void FlightCamera::begin()
{
    m_pointer.reset();
    m_spent = 0;
}

std::optional<ScreenTile> FlightCamera::take(qint64 now, const std::function<ScreenTile()> &picture)
{
    if (m_spent > now * 1000 / share + inAdvance)
        return {};
    const qint64 begun = m_clock();
    ScreenTile tile = picture();
    m_spent += m_clock() - begun;
    return tile.isEmpty() ? std::nullopt : std::optional(std::move(tile));
}

// Where the asking is noticed by programs it is done once.
QPoint FlightCamera::pointer()
{
    Pointer &port = m_platform.pointer();
    if (!m_pointer || port.isAskedUnseen())
        m_pointer = port.position();
    return *m_pointer;
}

std::optional<ScreenTile> FlightCamera::aroundPointer(qint64 now)
{
    return take(now, [this] {
        QRect area({}, ScreenTile::size);
        area.moveCenter(pointer());
        return ScreenTile(m_platform.screen().capture(area));
    });
}

std::optional<ScreenTile> FlightCamera::of(const ScreenRegion &region, qint64 now)
{
    return take(now, [&] { return ScreenTile(region); });
}

} // namespace plum
