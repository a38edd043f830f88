#include "platform/win32/win32_platform.h"

namespace plum {

namespace {

// The same number in every process.
UINT fetchMessage()
{
    static const UINT message = RegisterWindowMessageW(L"PlumFetchLauncher");
    return message;
}

} // namespace

void Win32Platform::onFetchRequested(std::function<void()> fetch)
{
    m_window.get().addReceiver(
        [fetch = std::move(fetch)](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != fetchMessage())
                return {};
            fetch();
            return 0;
        });
}

// The system lets only the program that had the last input, which is this one, pass the attention on.
void Win32Platform::requestFetch(qint64 process)
{
    for (HWND window = nullptr;
         (window = FindWindowExW(nullptr, window, HiddenWindow::className, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner != static_cast<DWORD>(process))
            continue;
        AllowSetForegroundWindow(owner);
        PostMessageW(window, fetchMessage(), 0, 0);
    }
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
