#pragma once

#include "platform/wayland/wire/output_screen.h"

#include <vector>

namespace plum {

class KWinBus;

// KWin's picture of its outputs, without the pointer, in the pixels of the layout. It comes through a pipe
// once KWin has drawn the next frame.
class KWinScreen final : public OutputScreen
{
public:
    KWinScreen(WaylandConnection &connection, KWinBus &bus)
        : OutputScreen(connection)
        , m_bus(bus)
    {
    }

    Capture capture(const QRect &region) override;

private:
    bool take(const QRect &part, const QRect &region);

    KWinBus &m_bus;
    std::vector<quint32> m_pixels;
};

} // namespace plum
