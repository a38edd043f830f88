#pragma once

#include "platform/lazy.h"
#include "platform/wayland/clipboard/wayland_clipboard.h"
#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/kwin/kwin_bus.h"
#include "platform/wayland/kwin/kwin_hotkey.h"
#include "platform/wayland/kwin/kwin_keyboard.h"
#include "platform/wayland/kwin/kwin_pointer.h"
#include "platform/wayland/kwin/kwin_screen.h"
#include "platform/wayland/kwin/kwin_scripts.h"
#include "platform/wayland/kwin/kwin_session.h"
#include "platform/wayland/kwin/kwin_shell.h"
#include "platform/wayland/kwin/kwin_windows.h"
#include "platform/wayland/wire/wire.h"

namespace plum {

// KWin, the compositor of KDE Plasma. It gives these ways to a program whose desktop file asks for them.
class KWinWire final : public Wire
{
public:
    explicit KWinWire(const Paths &paths);

    Clipboard &clipboard() override { return m_clipboard.get(connection()); }
    GlobalHotkey &hotkey() override { return m_hotkey.get(m_bus.get()); }
    Keyboard &keyboard() override { return m_keyboard.get(connection(), m_bus.get()); }
    Pointer &pointer() override { return m_pointer.get(connection(), kwinWindows()); }
    Screen &screen() override { return m_screen.get(connection(), m_bus.get()); }
    Session &session() override { return m_session.get(m_bus.get()); }
    Shell &shell() override { return m_shell; }
    Windows &windows() override { return kwinWindows(); }
    void releaseDesktop() override;

private:
    WaylandConnection &connection();
    KWinWindows &kwinWindows();

    // What is used by others comes before them.
    Lazy<WaylandConnection> m_connection;
    Lazy<KWinBus> m_bus;
    Lazy<KWinScripts> m_scripts;
    Lazy<KWinWindows> m_windows;
    Lazy<WaylandClipboard> m_clipboard;
    Lazy<KWinHotkey> m_hotkey;
    Lazy<KWinKeyboard> m_keyboard;
    Lazy<KWinPointer> m_pointer;
    Lazy<KWinScreen> m_screen;
    Lazy<KWinSession> m_session;
    KWinShell m_shell;
};

} // namespace plum
