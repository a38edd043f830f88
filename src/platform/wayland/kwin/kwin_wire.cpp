#include "platform/wayland/kwin/kwin_wire.h"

namespace plum {

KWinWire::KWinWire(const Paths &paths)
    : m_shell(paths, [this]() -> KWinWindows & { return kwinWindows(); })
{
}

WaylandConnection &KWinWire::connection()
{
    if (WaylandConnection *made = m_connection.ifMade())
        return *made;
    WaylandConnection &connection = m_connection.get();
    connection.listenInEventLoop();
    // Without these words KWin ignores what follows; which program it is KWin knows by its desktop file.
    if (connection.fakeInput())
        org_kde_kwin_fake_input_authenticate(connection.fakeInput(), "Plum", "runs scripts of the user's");
    return connection;
}

KWinWindows &KWinWire::kwinWindows()
{
    return m_windows.get(m_scripts.get(m_bus.get()));
}

void KWinWire::releaseDesktop()
{
    if (KWinPointer *pointer = m_pointer.ifMade())
        pointer->releaseAll();
    if (KWinKeyboard *keyboard = m_keyboard.ifMade())
        keyboard->releaseAll();
    if (KWinHotkey *hotkey = m_hotkey.ifMade())
        hotkey->unregisterHotkey();
    if (WaylandClipboard *clipboard = m_clipboard.ifMade())
        clipboard->outliveProcess();
    if (WaylandConnection *connection = m_connection.ifMade())
        connection->roundTrip();
}

} // namespace plum
