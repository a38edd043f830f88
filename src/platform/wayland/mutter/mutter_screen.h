#pragma once

#include "platform/screen.h"
#include "platform/wayland/wire/frame_stream.h"

#include <memory>
#include <vector>

namespace plum {

class GnomeBus;
class RemoteSession;

// The picture of the whole desktop, without the pointer, from the stream of the session. A desktop that is
// scaled is handed over in the finest pixels of its screens and brought to those in which GNOME places
// windows.
class MutterScreen final : public Screen
{
public:
    MutterScreen(GnomeBus &bus, RemoteSession &session)
        : m_bus(bus)
        , m_session(session)
    {
    }

    QSize mainScreenSize() override;
    QRect desktop() override;
    Capture capture(const QRect &region) override;
    qreal pixelsOfUnit(const QRect &place, qreal ratio) override;

private:
    std::optional<Frame> take();
    void copy(const Frame &frame, const QRect &part, const QRect &region);

    GnomeBus &m_bus;
    RemoteSession &m_session;
    std::unique_ptr<FrameStream> m_stream;
    int m_generation = 0; // of the session that the stream is of
    std::vector<quint32> m_pixels;
};

} // namespace plum
