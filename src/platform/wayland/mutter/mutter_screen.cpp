#include "platform/wayland/mutter/mutter_screen.h"

#include "platform/loaded_module.h"
#include "platform/wayland/mutter/gnome_bus.h"
#include "platform/wayland/mutter/gnome_monitors.h"
#include "platform/wayland/mutter/remote_session.h"

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maxPixels = qint64(1) << 28;
constexpr int patience = 10'000; // milliseconds

} // namespace

QSize MutterScreen::mainScreenSize()
{
    const std::vector<GnomeMonitor> monitors = readMonitors(m_bus);
    const auto main = std::ranges::find(monitors, true, &GnomeMonitor::isMain);
    return main == monitors.end() ? QSize() : main->area.size();
}

QRect MutterScreen::desktop()
{
    QRect all;
    for (const GnomeMonitor &monitor : readMonitors(m_bus))
        all |= monitor.area;
    return all;
}

// A stream that has nothing more to say belongs to a session that has ended, which is begun anew once.
std::optional<Frame> MutterScreen::take()
{
    const auto number = m_session.stream();
    if (!number)
        return {};
    if (!m_stream || m_generation != m_session.generation()) {
        LoadedModule library(u"plum-pipewire"_s);
        auto *module = qobject_cast<FrameStreamModule *>(library.object());
        m_stream = module ? module->open(*number) : nullptr;
        m_generation = m_session.generation();
    }
    return m_stream ? m_stream->next(patience) : std::nullopt;
}

// Brings the part that is on the desktop to its place among the region's pixels. The pixel in the middle of
// each of the desktop's counts.
void MutterScreen::copy(const Frame &frame, const QRect &part, const QRect &region)
{
    const QRect area = m_session.area();
    const QPoint from = part.topLeft() - area.topLeft();
    const QPoint to = part.topLeft() - region.topLeft();
    const auto scaled = [](int place, int there, int here) { return there * (2 * place + 1) / (2 * here); };
    for (int y = 0; y < part.height(); ++y) {
        const int row = scaled(from.y() + y, frame.size.height(), area.height());
        const quint32 *source = frame.pixels.data() + static_cast<std::size_t>(row) * frame.rowLength;
        quint32 *target = m_pixels.data()
            + static_cast<std::size_t>(to.y() + y) * static_cast<std::size_t>(region.width())
            + static_cast<std::size_t>(to.x());
        if (frame.size == area.size()) {
            std::copy_n(source + from.x(), part.width(), target);
            continue;
        }
        for (int x = 0; x < part.width(); ++x)
            target[x] = source[scaled(from.x() + x, frame.size.width(), area.width())];
    }
}

Capture MutterScreen::capture(const QRect &region)
{
    if (region.isEmpty() || qint64(region.width()) * region.height() > maxPixels)
        return {};
    const auto count = static_cast<std::size_t>(region.width()) * static_cast<std::size_t>(region.height());
    const QRect part = region.intersected(m_session.area());
    m_pixels.clear();
    if (!part.isEmpty()) {
        const auto frame = take();
        if (!frame)
            return {};
        m_pixels.resize(count);
        copy(*frame, part, region);
    }
    m_pixels.resize(count);
    return {region.size(), m_pixels};
}

qreal MutterScreen::pixelsOfUnit(const QRect &place, qreal)
{
    for (const GnomeMonitor &monitor : readMonitors(m_bus)) {
        if (monitor.area.topLeft() == place.topLeft())
            return monitor.pixelsOfUnit;
    }
    return 1;
}

} // namespace plum
