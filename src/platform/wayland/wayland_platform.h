#pragma once

#include "platform/linux/linux_platform.h"
#include "platform/wayland/wire/wire.h"

namespace plum {

// The ports on Linux with a Wayland compositor, through the wire that this compositor wants.
class WaylandPlatform final : public LinuxPlatform
{
public:
    using LinuxPlatform::LinuxPlatform;

    // Whether the compositor of WAYLAND_DISPLAY answers.
    static bool hasCompositor();

    Clipboard &clipboard() override { return wire().clipboard(); }
    GlobalHotkey &hotkey() override { return wire().hotkey(); }
    Keyboard &keyboard() override { return wire().keyboard(); }
    Pointer &pointer() override { return wire().pointer(); }
    Screen &screen() override { return wire().screen(); }
    Session &session() override { return wire().session(); }
    Shell &shell() override { return wire().shell(); }
    Windows &windows() override { return wire().windows(); }

    void releaseDesktop() override;

private:
    Wire &wire();

    std::unique_ptr<Wire> m_wire;
};

} // namespace plum
