#include "platform/wayland/wlroots/pointer_probe.h"

#include "platform/wayland/connection/shared_memory.h"
#include "platform/wayland/connection/wayland_connection.h"

#include <algorithm>

namespace plum {

namespace {

constexpr int patience = 1000; // milliseconds

// The invisible surface over one output.
struct Cover
{
    QPoint corner; // of the output in the layout
    WaylandOwned<wl_surface> surface;
    WaylandOwned<zwlr_layer_surface_v1> layer; // goes before its surface
    WaylandOwned<wp_viewport> viewport;
    QSize size; // empty until the compositor has said it
};

struct Entered
{
    wl_surface *surface = nullptr;
    QPoint place;
};

void configure(void *cover, zwlr_layer_surface_v1 *layer, uint32_t serial, uint32_t width, uint32_t height)
{
    static_cast<Cover *>(cover)->size = {static_cast<int>(width), static_cast<int>(height)};
    zwlr_layer_surface_v1_ack_configure(layer, serial);
}

std::unique_ptr<Cover> makeCover(WaylandConnection &connection, const WaylandOutput &output)
{
    static constexpr zwlr_layer_surface_v1_listener listener{
        .configure = configure,
        .closed = [](void *, zwlr_layer_surface_v1 *) {},
    };
    constexpr uint32_t allEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM
        | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
    constexpr int32_t overPanels = -1;
    auto cover = std::make_unique<Cover>();
    cover->corner = output.area().topLeft();
    cover->surface.reset(wl_compositor_create_surface(connection.compositor()));
    cover->viewport.reset(wp_viewporter_get_viewport(connection.viewporter(), cover->surface.get()));
    cover->layer.reset(zwlr_layer_shell_v1_get_layer_surface(connection.layerShell(), cover->surface.get(),
        output.object(), ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "plum-pointer"));
    zwlr_layer_surface_v1_add_listener(cover->layer.get(), &listener, cover.get());
    zwlr_layer_surface_v1_set_anchor(cover->layer.get(), allEdges);
    zwlr_layer_surface_v1_set_exclusive_zone(cover->layer.get(), overPanels);
    wl_surface_commit(cover->surface.get());
    return cover;
}

WaylandOwned<wl_pointer> watchPointer(WaylandConnection &connection, Entered &entered)
{
    static const wl_pointer_listener listener = [] {
        wl_pointer_listener made{};
        made.enter = [](void *data, wl_pointer *, uint32_t, wl_surface *surface, wl_fixed_t x, wl_fixed_t y) {
            *static_cast<Entered *>(data)
                = {surface, QPointF(wl_fixed_to_double(x), wl_fixed_to_double(y)).toPoint()};
        };
        made.leave = [](void *, wl_pointer *, uint32_t, wl_surface *) {};
        made.motion = [](void *data, wl_pointer *, uint32_t, wl_fixed_t x, wl_fixed_t y) {
            static_cast<Entered *>(data)->place
                = QPointF(wl_fixed_to_double(x), wl_fixed_to_double(y)).toPoint();
        };
        made.button = [](void *, wl_pointer *, uint32_t, uint32_t, uint32_t, uint32_t) {};
        made.axis = [](void *, wl_pointer *, uint32_t, uint32_t, wl_fixed_t) {};
        return made;
    }();
    WaylandOwned<wl_pointer> pointer(wl_seat_get_pointer(connection.seat()));
    wl_pointer_add_listener(pointer.get(), &listener, &entered);
    return pointer;
}

} // namespace

std::optional<QPoint> probePointer(WaylandConnection &connection)
{
    if (!connection.isOpen() || !connection.compositor() || !connection.viewporter()
        || !connection.layerShell() || !(connection.seatCapabilities() & WL_SEAT_CAPABILITY_POINTER))
        return {};
    Entered entered;
    const WaylandOwned<wl_pointer> pointer = watchPointer(connection, entered);
    std::vector<std::unique_ptr<Cover>> covers;
    for (const auto &output : connection.outputs())
        covers.push_back(makeCover(connection, *output));
    const auto isSized = [](const std::unique_ptr<Cover> &cover) { return !cover->size.isEmpty(); };
    if (!connection.waitUntil([&] { return std::ranges::all_of(covers, isSized); }, patience))
        return {};

    // One transparent pixel, drawn out over the output.
    SharedMemory memory(connection.shm());
    const auto pixel = memory.buffer({1, 1}, sizeof(quint32), WL_SHM_FORMAT_ARGB8888);
    if (!pixel)
        return {};
    for (const auto &cover : covers) {
        wp_viewport_set_destination(cover->viewport.get(), cover->size.width(), cover->size.height());
        wl_surface_attach(cover->surface.get(), pixel.get(), 0, 0);
        wl_surface_damage(cover->surface.get(), 0, 0, cover->size.width(), cover->size.height());
        wl_surface_commit(cover->surface.get());
    }
    connection.waitUntil([&] { return entered.surface != nullptr; }, patience);
    const auto under = std::ranges::find(
        covers, entered.surface, [](const std::unique_ptr<Cover> &cover) { return cover->surface.get(); });
    const bool isFound = entered.surface && under != covers.end();
    const QPoint place = isFound ? (*under)->corner + entered.place : QPoint();
    covers.clear();
    connection.roundTrip();
    return isFound ? std::optional(place) : std::nullopt;
}

} // namespace plum
