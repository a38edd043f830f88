#include "platform/wayland/connection/wayland_output.h"

namespace plum {

namespace {

wl_output_listener physicalListener()
{
    wl_output_listener listener{};
    listener.geometry = [](void *area, wl_output *, int32_t x, int32_t y, int32_t, int32_t, int32_t,
                            const char *, const char *, int32_t) {
        static_cast<QRect *>(area)->moveTopLeft({x, y});
    };
    listener.mode = [](void *area, wl_output *, uint32_t flags, int32_t width, int32_t height, int32_t) {
        if (flags & WL_OUTPUT_MODE_CURRENT)
            static_cast<QRect *>(area)->setSize({width, height});
    };
    listener.done = [](void *, wl_output *) {};
    listener.scale = [](void *, wl_output *, int32_t) {};
    return listener;
}

zxdg_output_v1_listener logicalListener()
{
    zxdg_output_v1_listener listener{};
    listener.logical_position = [](void *area, zxdg_output_v1 *, int32_t x, int32_t y) {
        static_cast<QRect *>(area)->moveTopLeft({x, y});
    };
    listener.logical_size = [](void *area, zxdg_output_v1 *, int32_t width, int32_t height) {
        static_cast<QRect *>(area)->setSize({width, height});
    };
    listener.done = [](void *, zxdg_output_v1 *) {};
    return listener;
}

} // namespace

WaylandOutput::WaylandOutput(uint32_t name, WaylandOwned<wl_output> output)
    : m_name(name)
    , m_output(std::move(output))
{
    static const wl_output_listener listener = physicalListener();
    wl_output_add_listener(m_output.get(), &listener, &m_physical);
}

void WaylandOutput::askForPlace(zxdg_output_manager_v1 *manager)
{
    if (m_place || !manager)
        return;
    static const zxdg_output_v1_listener listener = logicalListener();
    m_place.reset(zxdg_output_manager_v1_get_xdg_output(manager, m_output.get()));
    zxdg_output_v1_add_listener(m_place.get(), &listener, &m_logical);
}

} // namespace plum
