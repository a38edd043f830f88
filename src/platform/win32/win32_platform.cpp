#include "platform/win32/win32_platform.h"

namespace plum {

void Win32Platform::releaseDesktop()
{
    m_pointer.releaseAll();
    m_keyboard.releaseAll();
    if (Win32Clipboard *clipboard = m_clipboard.ifMade())
        clipboard->outliveProcess();
}

// The system knows by itself by which file this program was started.
std::unique_ptr<Platform> createPlatform(const QString &)
{
    return std::make_unique<Win32Platform>();
}

} // namespace plum
