#include "platform/x11/x11_screen.h"

#include <algorithm>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/randr.h>

namespace plum {

namespace {

constexpr qint64 maxPixels = qint64(1) << 28;
constexpr quint32 allPlanes = ~quint32(0);
constexpr std::size_t pixelBytes = 4;

std::size_t pixelCount(const QSize &size)
{
    return static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height());
}

bool hasExtension(X11Connection &connection, xcb_extension_t &extension)
{
    const xcb_query_extension_reply_t *found = xcb_get_extension_data(connection.xcb(), &extension);
    return found && found->present;
}

} // namespace

bool X11Screen::Segment::reserve(X11Connection &connection, std::size_t bytes)
{
    if (isAttached() && bytes <= m_bytes)
        return true;
    release();
    const int id = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (id < 0)
        return false;
    void *memory = shmat(id, nullptr, 0);
    const xcb_shm_seg_t segment = xcb_generate_id(connection.xcb());
    bool attached = memory != reinterpret_cast<void *>(-1);
    if (attached) {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection.xcb(),
            xcb_shm_attach_checked(connection.xcb(), segment, static_cast<quint32>(id), 0)));
        attached = !error && connection.isOpen();
        if (!attached)
            shmdt(memory);
    }
    // Both sides hold it now; it goes when the last of them lets go, however the process ends.
    shmctl(id, IPC_RMID, nullptr);
    if (!attached)
        return false;
    m_connection = &connection;
    m_id = segment;
    m_memory = memory;
    m_bytes = bytes;
    return true;
}

void X11Screen::Segment::release()
{
    if (!isAttached())
        return;
    if (m_connection->isOpen()) {
        xcb_shm_detach(m_connection->xcb(), m_id);
        m_connection->flush();
    }
    shmdt(m_memory);
    m_id = XCB_NONE;
    m_bytes = 0;
}

// The primary monitor; where none is chosen the one at the desktop's corner, where the pointer coordinates of
// scripts begin; the first where none is there either.
QSize X11Screen::mainScreenSize()
{
    if (!m_connection.isOpen())
        return {};
    const auto monitors = hasExtension(m_connection, xcb_randr_id)
        ? m_connection.reply(
            xcb_randr_get_monitors_reply, xcb_randr_get_monitors, m_connection.root(), quint8(true))
        : nullptr;
    QSize size;
    auto monitor = monitors ? xcb_randr_get_monitors_monitors_iterator(monitors.get())
                            : xcb_randr_monitor_info_iterator_t{};
    for (; monitor.rem > 0; xcb_randr_monitor_info_next(&monitor)) {
        const QSize own(monitor.data->width, monitor.data->height);
        if (own.isEmpty())
            continue;
        if (monitor.data->primary)
            return own;
        if (size.isEmpty() || (monitor.data->x == 0 && monitor.data->y == 0))
            size = own;
    }
    return size.isEmpty() ? desktop().size() : size;
}

QRect X11Screen::desktop()
{
    const auto root = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry, m_connection.root());
    return root ? QRect(0, 0, root->width, root->height) : QRect();
}

bool X11Screen::hasWholePixels() const
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection.xcb());
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0; xcb_format_next(&format)) {
        if (format.data->depth == m_connection.screen()->root_depth)
            return format.data->bits_per_pixel == 32 && m_connection.screen()->root_depth <= 24;
    }
    return false;
}

void X11Screen::giveUpSharedMemory()
{
    m_mayShare = false;
    m_segment.release();
}

const quint32 *X11Screen::copyThroughSegment(const QRect &part)
{
    if (!m_segment.reserve(m_connection, pixelCount(part.size()) * pixelBytes)) {
        m_mayShare = false;
        return nullptr;
    }
    const auto copied = m_connection.reply(xcb_shm_get_image_reply, xcb_shm_get_image, m_connection.root(),
        static_cast<qint16>(part.x()), static_cast<qint16>(part.y()), static_cast<quint16>(part.width()),
        static_cast<quint16>(part.height()), allPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment.id(), 0);
    return copied ? m_segment.pixels() : nullptr;
}

const quint32 *X11Screen::copyThroughSocket(const QRect &part)
{
    m_sent = m_connection.reply(xcb_get_image_reply, xcb_get_image, XCB_IMAGE_FORMAT_Z_PIXMAP,
        m_connection.root(), static_cast<qint16>(part.x()), static_cast<qint16>(part.y()),
        static_cast<quint16>(part.width()), static_cast<quint16>(part.height()), allPlanes);
    if (!m_sent || static_cast<std::size_t>(m_sent->length) * 4 < pixelCount(part.size()) * pixelBytes)
        return nullptr;
    return reinterpret_cast<const quint32 *>(xcb_get_image_data(m_sent.get()));
}

const quint32 *X11Screen::copyOut(const QRect &part)
{
    if (m_mayShare && hasExtension(m_connection, xcb_shm_id)) {
        const quint32 *pixels = copyThroughSegment(part);
        if (pixels || m_mayShare)
            return pixels;
    }
    return copyThroughSocket(part);
}

Capture X11Screen::capture(const QRect &region)
{
    if (region.isEmpty() || qint64(region.width()) * region.height() > maxPixels || !m_connection.isOpen()
        || !hasWholePixels())
        return {};

    // A desktop that becomes smaller between the question for its size and the copy makes the copy fail;
    // the second try knows the new size.
    QRect part;
    const quint32 *pixels = nullptr;
    for (int attempt = 0; attempt < 2 && !pixels; ++attempt) {
        part = region.intersected(desktop());
        if (part.isEmpty())
            break;
        pixels = copyOut(part);
        if (!pixels && attempt > 0)
            return {};
    }
    if (part == region)
        return {region.size(), {pixels, pixelCount(region.size())}};

    m_padded.assign(pixelCount(region.size()), 0);
    const QPoint corner = part.topLeft() - region.topLeft();
    for (int row = 0; pixels && row < part.height(); ++row) {
        const std::size_t from = static_cast<std::size_t>(row) * static_cast<std::size_t>(part.width());
        const std::size_t to
            = static_cast<std::size_t>(corner.y() + row) * static_cast<std::size_t>(region.width())
            + static_cast<std::size_t>(corner.x());
        std::copy_n(pixels + from, part.width(), m_padded.data() + to);
    }
    return {region.size(), m_padded};
}

} // namespace plum
