#include "platform/wayland/clipboard/keeper/selection_keeper.h"

#include "platform/wayland/clipboard/text_types.h"

#include <cerrno>
#include <poll.h>
#include <string_view>
#include <unistd.h>

namespace plum::keeper {

namespace {

constexpr int patience = 5000; // milliseconds that a receiver may stand still

zwlr_data_control_device_v1_listener deviceListener()
{
    zwlr_data_control_device_v1_listener listener{};
    listener.data_offer = [](void *, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
        zwlr_data_control_offer_v1_destroy(offer);
    };
    listener.selection = [](void *, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *) {};
    listener.finished = [](void *, zwlr_data_control_device_v1 *) {};
    return listener;
}

} // namespace

void SelectionKeeper::bind(uint32_t name, const std::string &interface)
{
    if (interface == wl_seat_interface.name && !m_seat) {
        m_seat.reset(static_cast<wl_seat *>(wl_registry_bind(m_registry.get(), name, &wl_seat_interface, 1)));
    } else if (interface == zwlr_data_control_manager_v1_interface.name) {
        m_manager.reset(static_cast<zwlr_data_control_manager_v1 *>(
            wl_registry_bind(m_registry.get(), name, &zwlr_data_control_manager_v1_interface, 1)));
    }
}

bool SelectionKeeper::takeOver(std::string utf8)
{
    m_utf8 = std::move(utf8);
    m_display.reset(wl_display_connect(nullptr));
    if (!m_display)
        return false;
    static constexpr wl_registry_listener globals{
        .global = [](void *self, wl_registry *, uint32_t name, const char *interface,
                      uint32_t) { static_cast<SelectionKeeper *>(self)->bind(name, interface); },
        .global_remove = [](void *, wl_registry *, uint32_t) {},
    };
    m_registry.reset(wl_display_get_registry(m_display.get()));
    wl_registry_add_listener(m_registry.get(), &globals, this);
    if (wl_display_roundtrip(m_display.get()) < 0 || !m_seat || !m_manager)
        return false;

    static const zwlr_data_control_device_v1_listener device = deviceListener();
    m_device.reset(zwlr_data_control_manager_v1_get_data_device(m_manager.get(), m_seat.get()));
    zwlr_data_control_device_v1_add_listener(m_device.get(), &device, nullptr);
    static constexpr zwlr_data_control_source_v1_listener source{
        .send = [](void *self, zwlr_data_control_source_v1 *, const char *,
                    int32_t descriptor) { static_cast<SelectionKeeper *>(self)->send(descriptor); },
        .cancelled
        = [](void *self,
              zwlr_data_control_source_v1 *) { static_cast<SelectionKeeper *>(self)->m_isOurs = false; },
    };
    m_source.reset(zwlr_data_control_manager_v1_create_data_source(m_manager.get()));
    zwlr_data_control_source_v1_add_listener(m_source.get(), &source, this);
    for (const char *type : textTypes)
        zwlr_data_control_source_v1_offer(m_source.get(), type);
    zwlr_data_control_device_v1_set_selection(m_device.get(), m_source.get());
    m_isOurs = true;
    return wl_display_roundtrip(m_display.get()) >= 0 && m_isOurs;
}

void SelectionKeeper::send(int descriptor) const
{
    std::string_view rest = m_utf8;
    while (!rest.empty()) {
        pollfd room{descriptor, POLLOUT, 0};
        if (poll(&room, 1, patience) <= 0)
            break;
        // No more than fits at once, so that a receiver that stands still is noticed.
        constexpr std::size_t piece = 4096;
        const ssize_t written = write(descriptor, rest.data(), std::min(rest.size(), piece));
        if (written < 0 && errno != EINTR)
            break;
        rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    close(descriptor);
}

void SelectionKeeper::serve()
{
    while (m_isOurs && wl_display_dispatch(m_display.get()) >= 0) { }
}

} // namespace plum::keeper
