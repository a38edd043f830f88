#pragma once

#include "platform/wayland/connection/wayland_objects.h"

#include <string>

namespace plum::keeper {

// Owns the clipboard's text on behalf of a program that has ended, until another program takes the clipboard
// or the compositor goes.
class SelectionKeeper
{
public:
    // Returns whether the clipboard is ours from now on.
    bool takeOver(std::string utf8);

    // Serves other programs until there is no reason left to.
    void serve();

private:
    void bind(uint32_t name, const std::string &interface);
    void send(int descriptor) const;

    std::string m_utf8;
    WaylandOwned<wl_display> m_display;
    WaylandOwned<wl_registry> m_registry;
    WaylandOwned<wl_seat> m_seat;
    WaylandOwned<zwlr_data_control_manager_v1> m_manager;
    WaylandOwned<zwlr_data_control_device_v1> m_device;
    WaylandOwned<zwlr_data_control_source_v1> m_source;
    bool m_isOurs = false;
};

} // namespace plum::keeper
