#pragma once

#include <wayland-client.h>

#include <memory>

#include <fake-input-client.h>
#include <keystate-client.h>
#include <plasma-window-management-client.h>
#include <viewporter-client.h>
#include <virtual-keyboard-unstable-v1-client.h>
#include <wlr-data-control-unstable-v1-client.h>
#include <xdg-output-unstable-v1-client.h>
// Its header names a parameter with a word of C++.
#define namespace wl_namespace // NOLINT(clang-diagnostic-keyword-macro)
#include <wlr-layer-shell-unstable-v1-client.h>
#undef namespace
#include <wlr-screencopy-unstable-v1-client.h>
#include <wlr-virtual-pointer-unstable-v1-client.h>

namespace plum {

// Ends an object of the compositor's with the pointer that owns it.
struct WaylandDeleter
{
    void operator()(org_kde_kwin_fake_input *object) const { org_kde_kwin_fake_input_destroy(object); }
    void operator()(org_kde_kwin_keystate *object) const { org_kde_kwin_keystate_destroy(object); }
    void operator()(org_kde_plasma_window *object) const { org_kde_plasma_window_destroy(object); }
    void operator()(org_kde_plasma_window_management *object) const
    {
        org_kde_plasma_window_management_destroy(object);
    }
    void operator()(wl_buffer *object) const { wl_buffer_destroy(object); }
    void operator()(wl_callback *object) const { wl_callback_destroy(object); }
    void operator()(wl_compositor *object) const { wl_compositor_destroy(object); }
    void operator()(wl_display *object) const { wl_display_disconnect(object); }
    void operator()(wl_keyboard *object) const { wl_keyboard_destroy(object); }
    void operator()(wl_output *object) const { wl_output_destroy(object); }
    void operator()(wl_pointer *object) const { wl_pointer_destroy(object); }
    void operator()(wl_registry *object) const { wl_registry_destroy(object); }
    void operator()(wl_seat *object) const { wl_seat_destroy(object); }
    void operator()(wl_shm *object) const { wl_shm_destroy(object); }
    void operator()(wl_shm_pool *object) const { wl_shm_pool_destroy(object); }
    void operator()(wl_surface *object) const { wl_surface_destroy(object); }
    void operator()(wp_viewport *object) const { wp_viewport_destroy(object); }
    void operator()(wp_viewporter *object) const { wp_viewporter_destroy(object); }
    void operator()(zwlr_data_control_device_v1 *object) const
    {
        zwlr_data_control_device_v1_destroy(object);
    }
    void operator()(zwlr_data_control_manager_v1 *object) const
    {
        zwlr_data_control_manager_v1_destroy(object);
    }
    void operator()(zwlr_data_control_offer_v1 *object) const { zwlr_data_control_offer_v1_destroy(object); }
    void operator()(zwlr_data_control_source_v1 *object) const
    {
        zwlr_data_control_source_v1_destroy(object);
    }
    void operator()(zwlr_layer_shell_v1 *object) const { zwlr_layer_shell_v1_destroy(object); }
    void operator()(zwlr_layer_surface_v1 *object) const { zwlr_layer_surface_v1_destroy(object); }
    void operator()(zwlr_screencopy_frame_v1 *object) const { zwlr_screencopy_frame_v1_destroy(object); }
    void operator()(zwlr_screencopy_manager_v1 *object) const { zwlr_screencopy_manager_v1_destroy(object); }
    void operator()(zwlr_virtual_pointer_manager_v1 *object) const
    {
        zwlr_virtual_pointer_manager_v1_destroy(object);
    }
    void operator()(zwlr_virtual_pointer_v1 *object) const { zwlr_virtual_pointer_v1_destroy(object); }
    void operator()(zwp_virtual_keyboard_manager_v1 *object) const
    {
        zwp_virtual_keyboard_manager_v1_destroy(object);
    }
    void operator()(zwp_virtual_keyboard_v1 *object) const { zwp_virtual_keyboard_v1_destroy(object); }
    void operator()(zxdg_output_manager_v1 *object) const { zxdg_output_manager_v1_destroy(object); }
    void operator()(zxdg_output_v1 *object) const { zxdg_output_v1_destroy(object); }
};
template <typename Object> using WaylandOwned = std::unique_ptr<Object, WaylandDeleter>;

} // namespace plum
