#include "platform/wayland/mutter/mutter_wire.h"

namespace plum {

void MutterWire::releaseDesktop()
{
    if (MutterPointer *pointer = m_pointer.ifMade())
        pointer->releaseAll();
    if (MutterKeyboard *keyboard = m_keyboard.ifMade())
        keyboard->releaseAll();
    if (MutterHotkey *hotkey = m_hotkey.ifMade())
        hotkey->unregisterHotkey();
    // What was pressed last reaches its window before the session ends with its devices.
    if (m_remote.takeUnsettled())
        m_extension.settle();
}

} // namespace plum
