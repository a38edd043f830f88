#include "platform/wayland/wayland_platform.h"

#include "platform/linux/compositor_offer.h"
#include "platform/wayland/connection/wayland_objects.h"
#include "platform/wayland/kwin/kwin_wire.h"
#include "platform/wayland/mutter/mutter_wire.h"
#include "platform/wayland/wlroots/wlroots_wire.h"

namespace plum {

namespace {

// For a compositor of no known family, too: its user has asked for Wayland, and may get a part of it.
std::unique_ptr<Wire> wireTo(CompositorFamily family, const Paths &paths)
{
    switch (family) {
    case CompositorFamily::KWin:
        return std::make_unique<KWinWire>(paths);
    case CompositorFamily::Mutter:
        return std::make_unique<MutterWire>(paths);
    case CompositorFamily::Unknown:
    case CompositorFamily::Wlroots:
        break;
    }
    return std::make_unique<WlrootsWire>(paths);
}

} // namespace

bool WaylandPlatform::hasCompositor()
{
    const WaylandOwned<wl_display> display(wl_display_connect(nullptr));
    return display != nullptr;
}

Wire &WaylandPlatform::wire()
{
    if (!m_wire)
        m_wire = wireTo(familyOf(compositorOffer()), paths());
    return *m_wire;
}

void WaylandPlatform::releaseDesktop()
{
    if (m_wire)
        m_wire->releaseDesktop();
}

} // namespace plum
