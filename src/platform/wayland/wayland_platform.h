#pragma once

#include "platform/linux/linux_platform.h"
#include "platform/wayland/clipboard/wayland_clipboard.h"
#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/sway/sway_hotkey.h"
#include "platform/wayland/sway/sway_windows.h"
#include "platform/wayland/wire/absent_ports.h"
#include "platform/wayland/wlroots/wlroots_keyboard.h"
#include "platform/wayland/wlroots/wlroots_pointer.h"
#include "platform/wayland/wlroots/wlroots_screen.h"
#include "platform/wayland/wlroots/wlroots_session.h"
#include "platform/wayland/wlroots/wlroots_shell.h"

namespace plum {

// The ports on Linux with a Wayland compositor. What the compositor does not offer does nothing.
class WaylandPlatform final : public LinuxPlatform
{
public:
    using LinuxPlatform::LinuxPlatform;

    // Whether the compositor of WAYLAND_DISPLAY answers.
    static bool hasCompositor();

    Clipboard &clipboard() override { return m_clipboard.get(connection()); }
    GlobalHotkey &hotkey() override;
    Keyboard &keyboard() override { return m_keyboard.get(connection()); }
    Pointer &pointer() override { return m_pointer.get(connection()); }
    Screen &screen() override { return m_screen.get(connection()); }
    Session &session() override { return m_session; }
    Shell &shell() override { return m_shell.get(paths()); }
    Windows &windows() override;

    void releaseDesktop() override;

private:
    WaylandConnection &connection();

    // The connection comes before the ports that use it.
    Lazy<WaylandConnection> m_connection;
    Lazy<WaylandClipboard> m_clipboard;
    Lazy<SwayHotkey> m_hotkey;
    AbsentHotkey m_noHotkey;
    Lazy<WaylandKeyboard> m_keyboard;
    Lazy<WaylandPointer> m_pointer;
    Lazy<WaylandScreen> m_screen;
    WaylandSession m_session;
    Lazy<WaylandShell> m_shell;
    Lazy<SwayWindows> m_windows;
    AbsentWindows m_noWindows;
};

} // namespace plum
