#include "platform/wayland/wlroots/wlroots_wire.h"

namespace plum {

WaylandConnection &WlrootsWire::connection()
{
    WaylandConnection &connection = m_connection.get();
    connection.listenInEventLoop();
    return connection;
}

GlobalHotkey &WlrootsWire::hotkey()
{
    if (!SwaySocket::isThere())
        return m_noHotkey;
    return m_hotkey.get();
}

Windows &WlrootsWire::windows()
{
    if (!SwaySocket::isThere())
        return m_noWindows;
    return m_windows.get([this] { return pointer().position(); });
}

void WlrootsWire::releaseDesktop()
{
    if (WlrootsPointer *pointer = m_pointer.ifMade())
        pointer->releaseAll();
    if (WlrootsKeyboard *keyboard = m_keyboard.ifMade())
        keyboard->releaseAll();
    if (SwayHotkey *hotkey = m_hotkey.ifMade())
        hotkey->unregisterHotkey();
    if (WaylandClipboard *clipboard = m_clipboard.ifMade())
        clipboard->outliveProcess();
    if (WaylandConnection *connection = m_connection.ifMade())
        connection->roundTrip();
}

} // namespace plum
