#pragma once

#include "platform/wayland/connection/wayland_output.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <vector>

namespace plum {

// This program's own connection to the compositor, apart from the one that Qt has: its requests keep their
// order among themselves, and no wait for an answer lets the user interface run. Without a compositor, or
// once it has gone, it is not open; what the compositor does not offer is null. What is built on it then does
// nothing.
class WaylandConnection
{
public:
    WaylandConnection();
    ~WaylandConnection();
    Q_DISABLE_COPY_MOVE(WaylandConnection)

    bool isOpen() const;

    org_kde_kwin_fake_input *fakeInput() const { return m_fakeInput.get(); }
    org_kde_kwin_keystate *keyState() const { return m_keyState.get(); }
    wl_compositor *compositor() const { return m_compositor.get(); }
    wl_seat *seat() const { return m_seat.get(); }
    wl_shm *shm() const { return m_shm.get(); }
    wp_viewporter *viewporter() const { return m_viewporter.get(); }
    zwlr_data_control_manager_v1 *dataControl() const { return m_dataControl.get(); }
    zwlr_layer_shell_v1 *layerShell() const { return m_layerShell.get(); }
    zwlr_screencopy_manager_v1 *screencopy() const { return m_screencopy.get(); }
    zwlr_virtual_pointer_manager_v1 *virtualPointers() const { return m_virtualPointers.get(); }
    zwp_virtual_keyboard_manager_v1 *virtualKeyboards() const { return m_virtualKeyboards.get(); }

    // Bits of wl_seat's `capability`: the kinds of devices that the seat has now.
    uint32_t seatCapabilities() const { return m_capabilities; }

    const std::vector<std::unique_ptr<WaylandOutput>> &outputs() const { return m_outputs; }
    // All outputs together; empty without one.
    QRect layout() const;

    void flush();

    // Handles what arrives until the compositor has worked off everything that was sent. False when it has
    // not within two seconds.
    bool roundTrip();

    // Handles what arrives until `condition` holds; false when it does not within `milliseconds`.
    bool waitUntil(const std::function<bool()> &condition, int milliseconds);

    // Lets the event loop handle what arrives while nobody waits here.
    void listenInEventLoop();

private:
    void add(uint32_t name, const char *interface, uint32_t version);
    void remove(uint32_t name);
    void dispatchArrived();

    WaylandOwned<wl_display> m_display;
    WaylandOwned<wl_registry> m_registry;
    WaylandOwned<org_kde_kwin_fake_input> m_fakeInput;
    WaylandOwned<org_kde_kwin_keystate> m_keyState;
    WaylandOwned<wl_compositor> m_compositor;
    WaylandOwned<wl_seat> m_seat;
    WaylandOwned<wl_shm> m_shm;
    WaylandOwned<wp_viewporter> m_viewporter;
    WaylandOwned<zwlr_data_control_manager_v1> m_dataControl;
    WaylandOwned<zwlr_layer_shell_v1> m_layerShell;
    WaylandOwned<zwlr_screencopy_manager_v1> m_screencopy;
    WaylandOwned<zwlr_virtual_pointer_manager_v1> m_virtualPointers;
    WaylandOwned<zwp_virtual_keyboard_manager_v1> m_virtualKeyboards;
    WaylandOwned<zxdg_output_manager_v1> m_outputManager;
    std::vector<std::unique_ptr<WaylandOutput>> m_outputs;
    uint32_t m_capabilities = 0;
    std::unique_ptr<QSocketNotifier> m_events;
};

} // namespace plum
