#include "platform/wayland/connection/wayland_connection.h"

#include <QAbstractEventDispatcher>
#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <string_view>

namespace plum {

namespace {

constexpr int roundTripTime = 2000; // milliseconds

// Binds the global to its place if `interface` names it. The version is the lowest that has what is used.
template <typename Object>
void bindTo(WaylandOwned<Object> &place, const wl_interface &type, std::string_view interface,
    wl_registry *registry, uint32_t name, uint32_t version, uint32_t wanted)
{
    if (!place && interface == type.name) {
        place.reset(
            static_cast<Object *>(wl_registry_bind(registry, name, &type, std::min(version, wanted))));
    }
}

} // namespace

WaylandConnection::WaylandConnection()
    : m_display(wl_display_connect(nullptr))
{
    if (!m_display)
        return;
    static constexpr wl_registry_listener listener{
        .global
        = [](void *self, wl_registry *, uint32_t name, const char *interface,
              uint32_t version) { static_cast<WaylandConnection *>(self)->add(name, interface, version); },
        .global_remove = [](void *self, wl_registry *,
                             uint32_t name) { static_cast<WaylandConnection *>(self)->remove(name); },
    };
    m_registry.reset(wl_display_get_registry(m_display.get()));
    wl_registry_add_listener(m_registry.get(), &listener, this);
    // The first one brings the objects, the second what they say of themselves.
    roundTrip();
    for (const auto &output : m_outputs)
        output->askForPlace(m_outputManager.get());
    roundTrip();
}

WaylandConnection::~WaylandConnection() = default;

bool WaylandConnection::isOpen() const
{
    return m_display && wl_display_get_error(m_display.get()) == 0;
}

void WaylandConnection::add(uint32_t name, const char *interface, uint32_t version)
{
    const auto bind = [&](auto &place, const wl_interface &type, uint32_t wanted) {
        bindTo(place, type, interface, m_registry.get(), name, version, wanted);
    };
    bind(m_fakeInput, org_kde_kwin_fake_input_interface, 4);
    bind(m_keyState, org_kde_kwin_keystate_interface, 4);
    bind(m_compositor, wl_compositor_interface, 4);
    bind(m_shm, wl_shm_interface, 1);
    bind(m_viewporter, wp_viewporter_interface, 1);
    bind(m_dataControl, zwlr_data_control_manager_v1_interface, 1);
    bind(m_layerShell, zwlr_layer_shell_v1_interface, 1);
    bind(m_screencopy, zwlr_screencopy_manager_v1_interface, 1);
    bind(m_virtualPointers, zwlr_virtual_pointer_manager_v1_interface, 1);
    bind(m_virtualKeyboards, zwp_virtual_keyboard_manager_v1_interface, 1);
    bind(m_outputManager, zxdg_output_manager_v1_interface, 1);
    if (!m_seat) {
        bind(m_seat, wl_seat_interface, 1);
        static constexpr wl_seat_listener listener{
            .capabilities
            = [](void *self, wl_seat *,
                  uint32_t now) { static_cast<WaylandConnection *>(self)->m_capabilities = now; },
            .name = [](void *, wl_seat *, const char *) {},
        };
        if (m_seat)
            wl_seat_add_listener(m_seat.get(), &listener, this);
    }
    WaylandOwned<wl_output> output;
    bind(output, wl_output_interface, 2);
    if (output) {
        m_outputs.push_back(std::make_unique<WaylandOutput>(name, std::move(output)));
        m_outputs.back()->askForPlace(m_outputManager.get());
    }
}

void WaylandConnection::remove(uint32_t name)
{
    std::erase_if(m_outputs, [&](const auto &output) { return output->name() == name; });
}

QRect WaylandConnection::layout() const
{
    QRect all;
    for (const auto &output : m_outputs)
        all |= output->area();
    return all;
}

void WaylandConnection::flush()
{
    if (!isOpen())
        return;
    // A compositor that is busy takes up the rest when it reads again.
    while (wl_display_flush(m_display.get()) < 0 && errno == EAGAIN) {
        pollfd room{wl_display_get_fd(m_display.get()), POLLOUT, 0};
        if (poll(&room, 1, roundTripTime) <= 0)
            return;
    }
}

bool WaylandConnection::roundTrip()
{
    if (!isOpen())
        return false;
    bool isDone = false;
    static constexpr wl_callback_listener listener{
        .done = [](void *done, wl_callback *, uint32_t) { *static_cast<bool *>(done) = true; },
    };
    const WaylandOwned<wl_callback> callback(wl_display_sync(m_display.get()));
    wl_callback_add_listener(callback.get(), &listener, &isDone);
    return waitUntil([&] { return isDone; }, roundTripTime);
}

bool WaylandConnection::waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds, Qt::PreciseTimer);
    while (isOpen()) {
        wl_display_dispatch_pending(m_display.get());
        if (condition())
            return true;
        flush();
        if (wl_display_prepare_read(m_display.get()) != 0)
            continue;
        pollfd arrival{wl_display_get_fd(m_display.get()), POLLIN, 0};
        const int arrived = poll(&arrival, 1, static_cast<int>(deadline.remainingTime()));
        if (arrived > 0)
            wl_display_read_events(m_display.get());
        else
            wl_display_cancel_read(m_display.get());
        if (arrived == 0)
            return false;
    }
    return false;
}

void WaylandConnection::listenInEventLoop()
{
    if (m_events || !isOpen())
        return;
    m_events = std::make_unique<QSocketNotifier>(wl_display_get_fd(m_display.get()), QSocketNotifier::Read);
    QObject::connect(m_events.get(), &QSocketNotifier::activated, m_events.get(), [this] {
        dispatchArrived();
        // A compositor that has gone leaves its socket readable for ever.
        if (!isOpen())
            m_events->setEnabled(false);
    });
    // An event that came together with an answer has left the socket already.
    if (QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance()) {
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, m_events.get(),
            [this] { dispatchArrived(); });
    }
}

void WaylandConnection::dispatchArrived()
{
    waitUntil([] { return false; }, 0);
    flush();
}

} // namespace plum
