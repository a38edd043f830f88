#include "platform/win32/win32_hotkey.h"

#include "platform/win32/hidden_window.h"

#include <utility>

namespace plum {

namespace {

constexpr int hotkeyId = 1; // of this window

} // namespace

Win32Hotkey::Win32Hotkey(HiddenWindow &window)
    : m_window(window)
{
    m_window.addReceiver([this](UINT message, WPARAM word, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_HOTKEY || word != hotkeyId)
            return {};
        // One that was on its way when it was unregistered is none.
        if (m_isRegistered)
            Q_EMIT fired(static_cast<quint32>(GetMessageTime()));
        return 0;
    });
}

Win32Hotkey::~Win32Hotkey()
{
    unregisterHotkey();
}

bool Win32Hotkey::registerHotkey(quint32 modifiers, quint32 virtualKey)
{
    unregisterHotkey();
    if (virtualKey < 'A' || virtualKey > 'Z')
        return false;
    m_isRegistered = RegisterHotKey(
        m_window.handle(), hotkeyId, (modifiers & (Alt | Control | Shift)) | MOD_NOREPEAT, virtualKey);
    return m_isRegistered;
}

void Win32Hotkey::unregisterHotkey()
{
    if (std::exchange(m_isRegistered, false))
        UnregisterHotKey(m_window.handle(), hotkeyId);
}

quint32 Win32Hotkey::now()
{
    return GetTickCount();
}

} // namespace plum
