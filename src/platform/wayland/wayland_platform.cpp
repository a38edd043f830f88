#include "platform/wayland/wayland_platform.h"

namespace plum {

bool WaylandPlatform::hasCompositor()
{
    const WaylandOwned<wl_display> display(wl_display_connect(nullptr));
    return display != nullptr;
}

WaylandConnection &WaylandPlatform::connection()
{
    WaylandConnection &connection = m_connection.get();
    connection.listenInEventLoop();
    return connection;
}

GlobalHotkey &WaylandPlatform::hotkey()
{
    if (!SwaySocket::isThere())
        return m_noHotkey;
    return m_hotkey.get();
}

Windows &WaylandPlatform::windows()
{
    if (!SwaySocket::isThere())
        return m_noWindows;
    return m_windows.get([this] { return pointer().position(); });
}

void WaylandPlatform::releaseDesktop()
{
    if (WaylandPointer *pointer = m_pointer.ifMade())
        pointer->releaseAll();
    if (WaylandKeyboard *keyboard = m_keyboard.ifMade())
        keyboard->releaseAll();
    if (SwayHotkey *hotkey = m_hotkey.ifMade())
        hotkey->unregisterHotkey();
    if (WaylandClipboard *clipboard = m_clipboard.ifMade())
        clipboard->outliveProcess();
    if (WaylandConnection *connection = m_connection.ifMade())
        connection->roundTrip();
}

} // namespace plum
