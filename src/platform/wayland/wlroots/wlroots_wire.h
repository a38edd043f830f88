#pragma once

#include "platform/lazy.h"
#include "platform/wayland/clipboard/wayland_clipboard.h"
#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/sway/sway_hotkey.h"
#include "platform/wayland/sway/sway_windows.h"
#include "platform/wayland/wire/absent_ports.h"
#include "platform/wayland/wire/wire.h"
#include "platform/wayland/wlroots/wlroots_keyboard.h"
#include "platform/wayland/wlroots/wlroots_pointer.h"
#include "platform/wayland/wlroots/wlroots_screen.h"
#include "platform/wayland/wlroots/wlroots_session.h"
#include "platform/wayland/wlroots/wlroots_shell.h"

namespace plum {

// Compositors built on wlroots; their common protocols have neither windows' places nor hotkeys, which sway
// has through its own socket.
class WlrootsWire final : public Wire
{
public:
    explicit WlrootsWire(const Paths &paths)
        : m_shell(paths)
    {
    }

    Clipboard &clipboard() override { return m_clipboard.get(connection()); }
    GlobalHotkey &hotkey() override;
    Keyboard &keyboard() override { return m_keyboard.get(connection()); }
    Pointer &pointer() override { return m_pointer.get(connection()); }
    Screen &screen() override { return m_screen.get(connection()); }
    Session &session() override { return m_session; }
    Shell &shell() override { return m_shell; }
    Windows &windows() override;
    void releaseDesktop() override;

private:
    WaylandConnection &connection();

    // The connection comes before the ports that use it.
    Lazy<WaylandConnection> m_connection;
    Lazy<WaylandClipboard> m_clipboard;
    Lazy<SwayHotkey> m_hotkey;
    AbsentHotkey m_noHotkey;
    Lazy<WlrootsKeyboard> m_keyboard;
    Lazy<WlrootsPointer> m_pointer;
    Lazy<WlrootsScreen> m_screen;
    WlrootsSession m_session;
    WlrootsShell m_shell;
    Lazy<SwayWindows> m_windows;
    AbsentWindows m_noWindows;
};

} // namespace plum
