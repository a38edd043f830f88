#pragma once

#include "platform/screen.h"
#include "platform/x11/connection/x11_connection.h"

#include <vector>
#include <xcb/shm.h>

namespace plum {

// The X server's picture of the root window. It comes through memory that the server writes into, one
// segment kept for all captures; a server without that extension, or one on another machine, sends it.
// Only screens with 32 bits a pixel can be captured, which all of today's are.
class X11Screen final : public Screen
{
public:
    explicit X11Screen(X11Connection &connection)
        : m_connection(connection)
    {
    }

    QSize mainScreenSize() override;
    QRect desktop() override;
    Capture capture(const QRect &region) override;

    // Whether the last capture came through shared memory.
    bool usesSharedMemory() const { return m_segment.isAttached(); }

    // Captures without shared memory from now on, as from a server that has none.
    void giveUpSharedMemory();

private:
    // Memory that this process and the server both see.
    class Segment
    {
    public:
        Segment() = default;
        ~Segment() { release(); }
        Q_DISABLE_COPY_MOVE(Segment)

        // Makes room for `bytes`. False when the server or the system has no shared memory.
        bool reserve(X11Connection &connection, std::size_t bytes);
        void release();

        bool isAttached() const { return m_id != XCB_NONE; }
        xcb_shm_seg_t id() const { return m_id; }
        const quint32 *pixels() const { return static_cast<const quint32 *>(m_memory); }

    private:
        X11Connection *m_connection = nullptr;
        xcb_shm_seg_t m_id = XCB_NONE;
        void *m_memory = nullptr;
        std::size_t m_bytes = 0;
    };

    const quint32 *copyOut(const QRect &part);
    const quint32 *copyThroughSegment(const QRect &part);
    const quint32 *copyThroughSocket(const QRect &part);
    bool hasWholePixels() const;

    X11Connection &m_connection;
    bool m_mayShare = true;
    Segment m_segment;
    XcbPointer<xcb_get_image_reply_t> m_sent;
    std::vector<quint32> m_padded; // a region that leaves the desktop
};

} // namespace plum
