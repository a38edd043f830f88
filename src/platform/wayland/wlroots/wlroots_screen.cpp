#include "platform/wayland/wlroots/wlroots_screen.h"

#include <algorithm>

namespace plum {

namespace {

constexpr int patience = 2000; // milliseconds

enum class Stage {
    Asked,
    Described,
    Copied,
    Refused,
};

struct Frame
{
    Stage stage = Stage::Asked;
    uint32_t format = 0;
    QSize size;
    int stride = 0;
    bool isUpsideDown = false;
};

constexpr zwlr_screencopy_frame_v1_listener listener{
    .buffer =
        [](void *data, zwlr_screencopy_frame_v1 *, uint32_t format, uint32_t width, uint32_t height,
            uint32_t stride) {
            auto &frame = *static_cast<Frame *>(data);
            frame.stage = Stage::Described;
            frame.format = format;
            frame.size = {static_cast<int>(width), static_cast<int>(height)};
            frame.stride = static_cast<int>(stride);
        },
    .flags =
        [](void *data, zwlr_screencopy_frame_v1 *, uint32_t flags) {
            static_cast<Frame *>(data)->isUpsideDown = flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT;
        },
    .ready = [](void *data, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t,
                 uint32_t) { static_cast<Frame *>(data)->stage = Stage::Copied; },
    .failed
    = [](void *data, zwlr_screencopy_frame_v1 *) { static_cast<Frame *>(data)->stage = Stage::Refused; },
    .damage = [](void *, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t, uint32_t, uint32_t) {},
    .linux_dmabuf = [](void *, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t, uint32_t) {},
    .buffer_done = [](void *, zwlr_screencopy_frame_v1 *) {},
};

// Formats of four bytes a pixel. In half of them red and blue have each other's place.
bool isSwapped(uint32_t format)
{
    return format == WL_SHM_FORMAT_ABGR8888 || format == WL_SHM_FORMAT_XBGR8888;
}

bool isKnown(uint32_t format)
{
    return isSwapped(format) || format == WL_SHM_FORMAT_ARGB8888 || format == WL_SHM_FORMAT_XRGB8888;
}

quint32 swapped(quint32 pixel)
{
    return (pixel & 0xff00ff00U) | (pixel & 0xffU) << 16 | (pixel >> 16 & 0xffU);
}

} // namespace

bool WlrootsScreen::take(const WaylandOutput &output, const QRect &part, Shot &shot)
{
    Frame frame;
    const QPoint corner = part.topLeft() - output.area().topLeft();
    const WaylandOwned<zwlr_screencopy_frame_v1> request(zwlr_screencopy_manager_v1_capture_output_region(
        connection().screencopy(), 0, output.object(), corner.x(), corner.y(), part.width(), part.height()));
    zwlr_screencopy_frame_v1_add_listener(request.get(), &listener, &frame);
    connection().waitUntil([&] { return frame.stage != Stage::Asked; }, patience);
    if (frame.stage != Stage::Described || !isKnown(frame.format))
        return false;
    const auto buffer = m_memory.buffer(frame.size, frame.stride, frame.format);
    if (!buffer)
        return false;
    zwlr_screencopy_frame_v1_copy(request.get(), buffer.get());
    connection().waitUntil([&] { return frame.stage != Stage::Described; }, patience);
    shot = {frame.size, frame.stride, frame.format, frame.isUpsideDown};
    return frame.stage == Stage::Copied;
}

// Brings what was taken to its place among the region's pixels. Of a scaled output the pixel in the middle of
// each of the layout's counts.
void WlrootsScreen::copy(const Shot &shot, const QRect &part, const QRect &region)
{
    const std::span<const quint32> pixels = m_memory.pixels();
    const auto rowLength = static_cast<std::size_t>(shot.stride) / sizeof(quint32);
    const QPoint corner = part.topLeft() - region.topLeft();
    for (int y = 0; y < part.height(); ++y) {
        const int taken = shot.size.height() * (2 * y + 1) / (2 * part.height());
        const auto row = static_cast<std::size_t>(shot.isUpsideDown ? shot.size.height() - 1 - taken : taken);
        const quint32 *from = pixels.data() + row * rowLength;
        quint32 *to = m_pixels.data()
            + static_cast<std::size_t>(corner.y() + y) * static_cast<std::size_t>(region.width())
            + static_cast<std::size_t>(corner.x());
        if (shot.size.width() == part.width()) {
            std::copy_n(from, part.width(), to);
        } else {
            for (int x = 0; x < part.width(); ++x)
                to[x] = from[shot.size.width() * (2 * x + 1) / (2 * part.width())];
        }
        if (isSwapped(shot.format))
            std::transform(to, to + part.width(), to, swapped);
    }
}

Capture WlrootsScreen::capture(const QRect &region)
{
    if (!isWithinBounds(region) || !connection().isOpen() || !connection().screencopy())
        return {};
    const auto count = static_cast<std::size_t>(region.width()) * static_cast<std::size_t>(region.height());
    m_pixels.clear();
    for (const auto &output : connection().outputs()) {
        const QRect part = region.intersected(output->area());
        if (part.isEmpty())
            continue;
        Shot shot;
        if (!take(*output, part, shot))
            return {};
        const bool isAsWanted = part == region && shot.size == region.size() && !shot.isUpsideDown
            && !isSwapped(shot.format) && shot.stride == region.width() * static_cast<int>(sizeof(quint32));
        if (isAsWanted)
            return {region.size(), m_memory.pixels().first(count)};
        m_pixels.resize(count);
        copy(shot, part, region);
    }
    m_pixels.resize(count);
    return {region.size(), m_pixels};
}

} // namespace plum
