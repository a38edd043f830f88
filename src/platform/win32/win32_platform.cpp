#include "platform/win32/win32_platform.h"

#include "platform/win32/win32_hand_watch.h"

namespace plum {

std::unique_ptr<HandWatch> Win32Platform::watchHand(const HandSigns &signs)
{
    return std::make_unique<Win32HandWatch>(signs);
}

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
