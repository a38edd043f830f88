#include "platform/win32/win32_clipboard.h"

#include "platform/win32/hidden_window.h"

#include <cstring>
#include <ole2.h>

namespace plum {

namespace {

constexpr ULONGLONG patience = 1000; // milliseconds
constexpr DWORD glance = 5; // milliseconds

// The clipboard, held open for this process alone. Another program may have it open, which takes it no longer
// than a moment.
class OpenClipboardSession
{
public:
    explicit OpenClipboardSession(HWND window)
    {
        const ULONGLONG end = GetTickCount64() + patience;
        while (!(m_isOpen = OpenClipboard(window)) && GetTickCount64() < end)
            Sleep(glance);
    }
    ~OpenClipboardSession()
    {
        if (m_isOpen)
            CloseClipboard();
    }
    Q_DISABLE_COPY_MOVE(OpenClipboardSession)

    explicit operator bool() const { return m_isOpen; }

private:
    bool m_isOpen = false;
};

// The owner may have promised the text instead of putting it there; reading would then wait for it as long as
// it hangs.
bool ownerAnswers()
{
    const HWND owner = GetClipboardOwner();
    if (!owner || GetWindowThreadProcessId(owner, nullptr) == GetCurrentThreadId())
        return true;
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(owner, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, static_cast<UINT>(patience), &answer)
        != 0;
}

QString textOf(HGLOBAL memory)
{
    const auto *text = static_cast<const wchar_t *>(memory ? GlobalLock(memory) : nullptr);
    if (!text)
        return {};
    // The text ends with its first zero, but not every program puts one.
    const std::size_t most = GlobalSize(memory) / sizeof(wchar_t);
    const QString read = QString::fromWCharArray(text, static_cast<qsizetype>(wcsnlen(text, most)));
    GlobalUnlock(memory);
    return read;
}

// Memory as the clipboard takes it over; null when there is none.
HGLOBAL memoryWith(const QString &text)
{
    const std::size_t bytes = (static_cast<std::size_t>(text.size()) + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (!memory)
        return nullptr;
    std::memcpy(GlobalLock(memory), text.utf16(), bytes);
    GlobalUnlock(memory);
    return memory;
}

} // namespace

Win32Clipboard::Win32Clipboard(HiddenWindow &window)
    : m_window(window)
{
    m_window.addReceiver([this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_CLIPBOARDUPDATE)
            return {};
        Q_EMIT changed();
        return 0;
    });
    AddClipboardFormatListener(m_window.handle());
}

Win32Clipboard::~Win32Clipboard()
{
    RemoveClipboardFormatListener(m_window.handle());
}

QString Win32Clipboard::text()
{
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT) || !ownerAnswers())
        return {};
    const OpenClipboardSession session(m_window.handle());
    return session ? textOf(GetClipboardData(CF_UNICODETEXT)) : QString();
}

void Win32Clipboard::setText(const QString &text)
{
    const OpenClipboardSession session(m_window.handle());
    if (!session)
        return;
    EmptyClipboard();
    const HGLOBAL memory = memoryWith(text);
    if (memory && !SetClipboardData(CF_UNICODETEXT, memory))
        GlobalFree(memory);
}

void Win32Clipboard::clear()
{
    if (const OpenClipboardSession session(m_window.handle()); session)
        EmptyClipboard();
}

void Win32Clipboard::outliveProcess()
{
    // The system keeps text that is there; what an editor of this program has only promised is put there now.
    OleFlushClipboard();
}

} // namespace plum
