#include "platform/win32/win32_keyboard.h"

#include <qt_windows.h>

namespace plum {

void Win32Keyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    keybd_event(virtualKey, 0, flags & (ExtendedKey | KeyUp), 0);
    m_down[virtualKey] = (flags & KeyUp) == 0;
}

void Win32Keyboard::releaseAll()
{
    for (std::size_t key = 0; key < m_down.size(); ++key) {
        if (m_down[key])
            keyEvent(static_cast<quint8>(key), KeyUp);
    }
}

} // namespace plum
