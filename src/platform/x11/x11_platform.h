#pragma once

#include "platform/linux/linux_platform.h"
#include "platform/x11/clipboard/x11_clipboard.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/keyboard/x11_hotkey.h"
#include "platform/x11/keyboard/x11_keyboard.h"
#include "platform/x11/keyboard/x11_keymap.h"
#include "platform/x11/windows/x11_windows.h"
#include "platform/x11/x11_pointer.h"
#include "platform/x11/x11_screen.h"
#include "platform/x11/x11_session.h"
#include "platform/x11/x11_shell.h"

#include <QSocketNotifier>

namespace plum {

// The ports on Linux with an X server; without one, whatever needs a display does nothing.
class X11Platform final : public LinuxPlatform
{
public:
    using LinuxPlatform::LinuxPlatform;

    // Whether the X server of DISPLAY answers.
    static bool hasServer();

    Clipboard &clipboard() override { return m_clipboard.get(connection()); }
    GlobalHotkey &hotkey() override { return m_hotkey.get(connection(), keymap()); }
    Keyboard &keyboard() override { return m_keyboard.get(connection(), keymap()); }
    Pointer &pointer() override { return m_pointer.get(connection()); }
    Screen &screen() override { return m_screen.get(connection()); }
    Session &session() override { return m_session.get(connection()); }
    Shell &shell() override { return m_shell.get(paths()); }
    Windows &windows() override { return m_windows.get(connection()); }

    std::unique_ptr<HandWatch> watchHand(const HandSigns &signs) override;
    void releaseDesktop() override;

private:
    X11Connection &connection();
    X11Keymap &keymap() { return m_keymap.get(connection()); }

    // The connection and the map of the keyboard come before the ports that use them.
    Lazy<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_connectionEvents;
    Lazy<X11Keymap> m_keymap;
    Lazy<X11Clipboard> m_clipboard;
    Lazy<X11Hotkey> m_hotkey;
    Lazy<X11Keyboard> m_keyboard;
    Lazy<X11Pointer> m_pointer;
    Lazy<X11Screen> m_screen;
    Lazy<X11Session> m_session;
    Lazy<X11Shell> m_shell;
    Lazy<X11Windows> m_windows;
};

} // namespace plum
