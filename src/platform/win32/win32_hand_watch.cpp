#include "platform/win32/win32_hand_watch.h"

#include "platform/global_hotkey.h"
#include "platform/stop_signal.h"

#include <chrono>
#include <optional>

namespace plum {

namespace {

using Clock = std::chrono::steady_clock;

// A run that is over so soon is not worth a hook.
constexpr DWORD firstLook = 30; // milliseconds

constexpr std::chrono::milliseconds heldEscape{HandSigns::heldEscape};

// What the hook of this thread has seen. The system's callback is told nothing of whom it works for, so this
// has to be found by the thread.
struct Seen
{
    const HandSigns &signs;
    std::optional<Clock::time_point> escapeSince = {};
    bool isHotkeyDown = false;
    bool isStop = false;

    void key(DWORD virtualKey, bool isPress, bool isHand);
    bool areModifiersDown() const;
};

thread_local Seen *seen = nullptr;

bool isDown(int virtualKey)
{
    return (GetAsyncKeyState(virtualKey) & 0x8000) != 0;
}

// Exactly those of the hotkey.
bool Seen::areModifiersDown() const
{
    const quint32 wanted = signs.hotkey.modifiers;
    return isDown(VK_MENU) == ((wanted & GlobalHotkey::Alt) != 0)
        && isDown(VK_CONTROL) == ((wanted & GlobalHotkey::Control) != 0)
        && isDown(VK_SHIFT) == ((wanted & GlobalHotkey::Shift) != 0);
}

// A key that is held repeats its press.
void Seen::key(DWORD virtualKey, bool isPress, bool isHand)
{
    if (virtualKey == VK_ESCAPE && isHand) {
        if (!isPress)
            escapeSince.reset();
        else if (!escapeSince)
            escapeSince = Clock::now();
    }
    if (signs.hotkey.virtualKey == 0 || virtualKey != signs.hotkey.virtualKey)
        return;
    const bool isRepetition = isPress && isHotkeyDown;
    isHotkeyDown = isPress;
    if (isPress && !isRepetition && areModifiersDown()
        && (isHand || !signs.ownKeys.isRecent(signs.hotkey.virtualKey)))
        isStop = true;
}

LRESULT CALLBACK lookAtKey(int code, WPARAM message, LPARAM value)
{
    if (code == HC_ACTION && seen) {
        const auto &key = *reinterpret_cast<const KBDLLHOOKSTRUCT *>(value);
        const bool isPress = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
        const bool isHand = (key.flags & LLKHF_INJECTED) == 0;
        if (isPress && isHand && seen->signs.atWork)
            seen->signs.atWork();
        seen->key(key.vkCode, isPress, isHand);
    }
    return CallNextHookEx(nullptr, code, message, value);
}

// Set only where somebody wants to know of the hand's work.
LRESULT CALLBACK lookAtMouse(int code, WPARAM message, LPARAM value)
{
    if (code == HC_ACTION && seen) {
        const auto &mouse = *reinterpret_cast<const MSLLHOOKSTRUCT *>(value);
        const bool isRelease = message == WM_LBUTTONUP || message == WM_RBUTTONUP || message == WM_MBUTTONUP
            || message == WM_XBUTTONUP;
        if (!isRelease && (mouse.flags & LLMHF_INJECTED) == 0)
            seen->signs.atWork();
    }
    return CallNextHookEx(nullptr, code, message, value);
}

// Until Esc has been held for long enough, if it is down.
DWORD millisecondsLeft(const Seen &state)
{
    if (!state.escapeSince)
        return INFINITE;
    const auto left
        = std::chrono::ceil<std::chrono::milliseconds>(*state.escapeSince + heldEscape - Clock::now())
              .count();
    return left > 0 ? static_cast<DWORD>(left) : 0;
}

} // namespace

Win32HandWatch::Win32HandWatch(const HandSigns &signs)
    : m_end(CreateEventW(nullptr, TRUE, FALSE, nullptr))
    , m_thread([this, signs] { watch(signs); })
{
}

Win32HandWatch::~Win32HandWatch()
{
    SetEvent(m_end);
    m_thread.join();
    CloseHandle(m_end);
}

void Win32HandWatch::watch(const HandSigns &signs) const
{
    if (WaitForSingleObject(m_end, firstLook) != WAIT_TIMEOUT)
        return;
    Seen state{.signs = signs};
    seen = &state;
    const HHOOK hook = SetWindowsHookExW(WH_KEYBOARD_LL, &lookAtKey, GetModuleHandleW(nullptr), 0);
    const HHOOK mouseHook
        = signs.atWork ? SetWindowsHookExW(WH_MOUSE_LL, &lookAtMouse, GetModuleHandleW(nullptr), 0) : nullptr;
    while (hook
        && MsgWaitForMultipleObjects(1, &m_end, FALSE, millisecondsLeft(state), QS_ALLINPUT)
            != WAIT_OBJECT_0) {
        // The hook is called from here.
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        if (state.escapeSince && Clock::now() - *state.escapeSince >= heldEscape) {
            state.escapeSince.reset();
            state.isStop = true;
        }
        if (state.isStop)
            signs.stop();
        state.isStop = false;
    }
    if (hook)
        UnhookWindowsHookEx(hook);
    if (mouseHook)
        UnhookWindowsHookEx(mouseHook);
    seen = nullptr;
}

} // namespace plum
