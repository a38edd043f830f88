#include "platform/win32/win32_windows.h"

#include "platform/win32/text/wide_text.h"

#include <algorithm>
#include <array>
#include <dwmapi.h>
#include <functional>
#include <qt_windows.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace plum {

namespace {

constexpr ULONGLONG reactionTime = 500; // milliseconds
constexpr DWORD glance = 2; // milliseconds

// The system keeps window handles within 32 bits, with the sign of the number.
HWND native(WindowHandle window)
{
    return static_cast<HWND>(LongToHandle(window));
}

WindowHandle handle(HWND window)
{
    return HandleToLong(window);
}

bool isOfThisThread(HWND window)
{
    return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
}

// The change of a window of this thread is made when it was asked for; waiting would keep it from happening.
void waitFor(HWND window, const std::function<bool()> &condition)
{
    if (isOfThisThread(window))
        return;
    const ULONGLONG end = GetTickCount64() + reactionTime;
    while (IsWindow(window) && !condition() && GetTickCount64() < end)
        Sleep(glance);
    if (!IsWindow(window))
        return;
    // The first sign of a change comes before its last. A program that answers has done with it.
    const ULONGLONG now = GetTickCount64();
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(
        window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, static_cast<UINT>(std::max(end, now + 1) - now), &answer);
}

void setShowState(HWND window, int state)
{
    if (isOfThisThread(window))
        ShowWindow(window, state);
    else
        ShowWindowAsync(window, state);
}

// Keeps the size, and what else `flags` name.
void setPosition(HWND window, HWND after, QPoint corner, UINT flags)
{
    SetWindowPos(window, after, corner.x(), corner.y(), 0, 0, flags | SWP_NOSIZE | SWP_ASYNCWINDOWPOS);
}

// Only the program that had the last input may pass the attention on. A move by nothing makes it this one.
void bringToFront(HWND window)
{
    if (!SetForegroundWindow(window)) {
        mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
        SetForegroundWindow(window);
    }
}

// The system takes a window to the front that gets a position there, unless another program guards the
// attention. Controls, and windows that nobody can see, stay without it.
void insistOnFront(HWND window)
{
    if (!IsWindowVisible(window) || IsIconic(window) || GetAncestor(window, GA_ROOT) != window)
        return;
    if (GetForegroundWindow() != window)
        bringToFront(window);
    waitFor(window, [window] { return GetForegroundWindow() == window; });
}

QRect outerRectangle(HWND window)
{
    RECT area{};
    if (!GetWindowRect(window, &area))
        return {};
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

// Windows on other virtual desktops are shown as far as they know, but cloaked.
bool isCloaked(HWND window)
{
    DWORD reasons = 0;
    return SUCCEEDED(DwmGetWindowAttribute(window, DWMWA_CLOAKED, &reasons, sizeof reasons)) && reasons != 0;
}

bool isDesktop(HWND window)
{
    constexpr std::array<std::wstring_view, 2> wallpapers{L"Progman", L"WorkerW"};
    std::array<wchar_t, 32> name{};
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    const std::wstring_view found(name.data(), static_cast<std::size_t>(length));
    return window == GetDesktopWindow() || window == GetShellWindow()
        || std::ranges::find(wallpapers, found) != wallpapers.end();
}

// What the system tells of windows that come, go and change their titles. It tells so in the event loop of
// the thread that listens.
class Win32WindowNews final : public News
{
public:
    // Null where the system tells nothing.
    static std::unique_ptr<News> listening();

    ~Win32WindowNews() override;
    Q_DISABLE_COPY_MOVE(Win32WindowNews)

    bool arrived() override;

private:
    Win32WindowNews() = default;
    static void CALLBACK hear(
        HWINEVENTHOOK hook, DWORD event, HWND window, LONG object, LONG child, DWORD thread, DWORD time);

    std::array<HWINEVENTHOOK, 2> m_hooks{};
    bool m_hasArrived = true;
};

// The system's callback is told nothing of whom it works for, so this has to be found by the thread.
thread_local std::vector<Win32WindowNews *> listeners;

std::unique_ptr<News> Win32WindowNews::listening()
{
    std::unique_ptr<Win32WindowNews> news(new Win32WindowNews);
    const auto hook = [](DWORD first, DWORD last) {
        return SetWinEventHook(first, last, nullptr, &Win32WindowNews::hear, 0, 0, WINEVENT_OUTOFCONTEXT);
    };
    news->m_hooks = {
        hook(EVENT_OBJECT_CREATE, EVENT_OBJECT_HIDE), hook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE)};
    listeners.push_back(news.get());
    if (std::ranges::count(news->m_hooks, nullptr) > 0)
        return nullptr;
    return news;
}

Win32WindowNews::~Win32WindowNews()
{
    for (const HWINEVENTHOOK hook : m_hooks) {
        if (hook)
            UnhookWinEvent(hook);
    }
    std::erase(listeners, this);
}

bool Win32WindowNews::arrived()
{
    return std::exchange(m_hasArrived, false);
}

void Win32WindowNews::hear(HWINEVENTHOOK, DWORD, HWND, LONG object, LONG child, DWORD, DWORD)
{
    if (object != OBJID_WINDOW || child != CHILDID_SELF)
        return;
    for (Win32WindowNews *news : listeners)
        news->m_hasArrived = true;
}

} // namespace

WindowHandle Win32Windows::foreground()
{
    return handle(GetForegroundWindow());
}

WindowHandle Win32Windows::underPointer()
{
    POINT point{};
    GetCursorPos(&point);
    return handle(WindowFromPoint(point));
}

WindowHandle Win32Windows::topLevel(WindowHandle window)
{
    return handle(GetAncestor(native(window), GA_ROOT));
}

WindowHandle Win32Windows::byTitle(const QString &title)
{
    return handle(FindWindowW(nullptr, wide(title)));
}

// What another program's window last told the system: nobody is waited for.
QString Win32Windows::title(WindowHandle window)
{
    const HWND asked = native(window);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(asked)) + 1, L'\0');
    const int length = GetWindowTextW(asked, text.data(), static_cast<int>(text.size()));
    return QString::fromWCharArray(text.data(), length);
}

std::vector<WindowHandle> Win32Windows::stacking()
{
    std::vector<WindowHandle> windows;
    const auto add = [](HWND window, LPARAM list) -> BOOL {
        if (IsWindowVisible(window) && !isDesktop(window))
            reinterpret_cast<std::vector<WindowHandle> *>(list)->push_back(handle(window));
        return TRUE;
    };
    EnumWindows(add, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

bool Win32Windows::isOnScreen(WindowHandle window)
{
    const HWND asked = native(window);
    return IsWindowVisible(asked) && !IsIconic(asked) && !isCloaked(asked);
}

QRect Win32Windows::rectangle(WindowHandle window)
{
    return outerRectangle(native(window));
}

void Win32Windows::close(WindowHandle window)
{
    const HWND closed = native(window);
    if (!IsWindow(closed))
        return;
    PostMessageW(closed, WM_CLOSE, 0, 0);
    waitFor(closed, [closed] { return !IsWindowVisible(closed); });
}

void Win32Windows::activate(WindowHandle window)
{
    const HWND activated = native(window);
    if (!IsWindow(activated))
        return;
    bringToFront(activated);
    waitFor(activated, [activated] { return GetForegroundWindow() == GetAncestor(activated, GA_ROOT); });
}

void Win32Windows::hide(WindowHandle window)
{
    const HWND hidden = native(window);
    setPosition(hidden, nullptr, {}, SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    waitFor(hidden, [hidden] { return !IsWindowVisible(hidden); });
}

void Win32Windows::show(WindowHandle window)
{
    const HWND shown = native(window);
    setPosition(shown, HWND_TOP, {}, SWP_SHOWWINDOW | SWP_NOMOVE);
    waitFor(shown, [shown] { return IsWindowVisible(shown); });
    insistOnFront(shown);
}

void Win32Windows::minimise(WindowHandle window)
{
    const HWND minimised = native(window);
    setShowState(minimised, SW_MINIMIZE);
    waitFor(minimised, [minimised] { return IsIconic(minimised); });
}

void Win32Windows::maximise(WindowHandle window)
{
    const HWND maximised = native(window);
    setShowState(maximised, SW_MAXIMIZE);
    waitFor(maximised, [maximised] { return IsZoomed(maximised); });
}

void Win32Windows::moveTo(WindowHandle window, QPoint corner)
{
    const HWND moved = native(window);
    setPosition(moved, HWND_TOP, corner, 0);
    waitFor(moved, [moved, corner] { return outerRectangle(moved).topLeft() == corner; });
    insistOnFront(moved);
}

void Win32Windows::bringHere(WindowHandle window)
{
    const HWND fetched = native(window);
    if (!isCloaked(fetched))
        return;
    // A hidden window comes back on the desktop that the user sees.
    hide(window);
    setPosition(fetched, nullptr, {}, SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    waitFor(fetched, [fetched] { return IsWindowVisible(fetched); });
}

void Win32Windows::setTopmost(WindowHandle window)
{
    const HWND raised = native(window);
    setPosition(raised, HWND_TOPMOST, {}, SWP_NOMOVE | SWP_NOACTIVATE);
    waitFor(raised, [raised] { return (GetWindowLongW(raised, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; });
}

std::unique_ptr<News> Win32Windows::newsOfTitles()
{
    return Win32WindowNews::listening();
}

} // namespace plum
