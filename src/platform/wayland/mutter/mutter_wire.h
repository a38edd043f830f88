#pragma once

#include "platform/lazy.h"
#include "platform/linux/linux_session.h"
#include "platform/linux/linux_shell.h"
#include "platform/wayland/mutter/desktop_extension.h"
#include "platform/wayland/mutter/mutter_clipboard.h"
#include "platform/wayland/mutter/mutter_hotkey.h"
#include "platform/wayland/mutter/mutter_keyboard.h"
#include "platform/wayland/mutter/mutter_pointer.h"
#include "platform/wayland/mutter/mutter_screen.h"
#include "platform/wayland/mutter/mutter_windows.h"
#include "platform/wayland/mutter/remote_session.h"
#include "platform/wayland/wire/wire.h"

namespace plum {

// GNOME: keys, the pointer and the screen as programs have them that share the screen, the rest through
// Plum's extension of the GNOME Shell. Without the extension that rest does nothing.
class MutterWire final : public Wire
{
public:
    explicit MutterWire(const Paths &paths)
        : m_shell(paths)
    {
    }

    Clipboard &clipboard() override { return m_clipboard.get(m_extension); }
    GlobalHotkey &hotkey() override { return m_hotkey.get(m_extension); }
    Keyboard &keyboard() override { return m_keyboard.get(m_remote, m_extension); }
    Pointer &pointer() override { return m_pointer.get(m_remote, m_extension); }
    Screen &screen() override { return m_screen.get(m_bus, m_remote); }
    Session &session() override { return m_session; }
    Shell &shell() override { return m_shell; }
    Windows &windows() override { return m_windows.get(m_extension, m_remote); }
    void releaseDesktop() override;

private:
    // No service of the desktop's switches the monitor off and on again.
    class GnomeSession final : public LinuxSession
    {
    public:
        Outcome monitorOff() override { return Outcome::Unavailable; }
    };

    // Windows of started programs come as these want them.
    class GnomeShell final : public LinuxShell
    {
    public:
        using LinuxShell::LinuxShell;

    protected:
        void giveToNewWindow(pid_t, ShowState) override { }
    };

    // The bus and what goes over it come before the ports that use them.
    GnomeBus m_bus;
    RemoteSession m_remote{m_bus};
    DesktopExtension m_extension{m_bus};
    Lazy<MutterClipboard> m_clipboard;
    Lazy<MutterHotkey> m_hotkey;
    Lazy<MutterKeyboard> m_keyboard;
    Lazy<MutterPointer> m_pointer;
    Lazy<MutterScreen> m_screen;
    GnomeSession m_session;
    GnomeShell m_shell;
    Lazy<MutterWindows> m_windows;
};

} // namespace plum
