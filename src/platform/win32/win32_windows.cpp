#include "platform/win32/win32_windows.h"

#include "platform/win32/text/wide_text.h"

#include <algorithm>
#include <array>
#include <dwmapi.h>
#include <functional>
#include <qt_windows.h>
#include <string_view>

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

// Changes what `flags` name, nothing else.
void setPosition(HWND window, HWND after, QPoint corner, UINT flags)
{
    SetWindowPos(window, after, corner.x(), corner.y(), 0, 0,
        flags | SWP_NOSIZE | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
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

} // namespace

WindowHandle Win32Windows::foreground()
{
    return handle(GetForegroundWindow());
}

WindowHandle Win32Windows::underPointer()
{
    POINT point{};
    GetCursorPos(&point);
    const HWND window = GetAncestor(WindowFromPoint(point), GA_ROOT);
    return !window || isDesktop(window) ? 0 : handle(window);
}

WindowHandle Win32Windows::byTitle(const QString &title)
{
    return handle(FindWindowW(nullptr, wide(title)));
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
    if (IsIconic(activated))
        setShowState(activated, SW_RESTORE);
    // Only the program that had the last input may pass the attention on. A move by nothing makes it this
    // one.
    if (!SetForegroundWindow(activated)) {
        mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
        SetForegroundWindow(activated);
    }
    waitFor(activated, [activated] { return GetForegroundWindow() == activated && !IsIconic(activated); });
}

void Win32Windows::hide(WindowHandle window)
{
    const HWND hidden = native(window);
    setPosition(hidden, nullptr, {}, SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOZORDER);
    waitFor(hidden, [hidden] { return !IsWindowVisible(hidden); });
}

void Win32Windows::show(WindowHandle window)
{
    const HWND shown = native(window);
    setPosition(shown, nullptr, {}, SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOZORDER);
    waitFor(shown, [shown] { return IsWindowVisible(shown); });
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
    setPosition(moved, nullptr, corner, SWP_NOZORDER);
    waitFor(moved, [moved, corner] { return outerRectangle(moved).topLeft() == corner; });
}

void Win32Windows::bringHere(WindowHandle window)
{
    // A hidden window comes back on the desktop that the user sees.
    if (isCloaked(native(window))) {
        hide(window);
        show(window);
    }
}

void Win32Windows::setTopmost(WindowHandle window)
{
    const HWND raised = native(window);
    setPosition(raised, HWND_TOPMOST, {}, SWP_NOMOVE);
    waitFor(raised, [raised] { return (GetWindowLongW(raised, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; });
}

} // namespace plum
