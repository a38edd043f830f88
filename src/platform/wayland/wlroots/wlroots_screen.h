#pragma once

#include "platform/wayland/connection/shared_memory.h"
#include "platform/wayland/wire/output_screen.h"

#include <vector>

namespace plum {

// The compositor's picture of its outputs, without the pointer. An output that is scaled is captured in its
// own pixels and brought to those of the layout, in which scripts count.
class WlrootsScreen final : public OutputScreen
{
public:
    explicit WlrootsScreen(WaylandConnection &connection)
        : OutputScreen(connection)
        , m_memory(connection.shm())
    {
    }

    Capture capture(const QRect &region) override;

private:
    struct Shot
    {
        QSize size; // in pixels of the output
        int stride = 0; // bytes
        uint32_t format = 0;
        bool isUpsideDown = false;
    };

    bool take(const WaylandOutput &output, const QRect &part, Shot &shot);
    void copy(const Shot &shot, const QRect &part, const QRect &region);

    SharedMemory m_memory;
    std::vector<quint32> m_pixels;
};

} // namespace plum
