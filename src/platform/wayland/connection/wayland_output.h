#pragma once

#include "platform/wayland/connection/wayland_objects.h"

#include <QRect>

namespace plum {

// One screen of the desktop: where it lies in the compositor's layout, in the layout's own (logical) pixels.
class WaylandOutput
{
public:
    // `name` is the registry's number for it.
    WaylandOutput(uint32_t name, WaylandOwned<wl_output> output);
    Q_DISABLE_COPY_MOVE(WaylandOutput)

    uint32_t name() const { return m_name; }
    wl_output *object() const { return m_output.get(); }

    // Without it the layout is made of the screens' own pixels. Nothing happens the second time.
    void askForPlace(zxdg_output_manager_v1 *manager);

    QRect area() const { return m_place ? m_logical : m_physical; }

private:
    uint32_t m_name;
    WaylandOwned<wl_output> m_output;
    WaylandOwned<zxdg_output_v1> m_place;
    QRect m_physical;
    QRect m_logical;
};

} // namespace plum
