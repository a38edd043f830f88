#pragma once

#include "platform/lazy.h"
#include "platform/platform.h"
#include "platform/win32/end_requests.h"
#include "platform/win32/hidden_window.h"
#include "platform/win32/jscript.h"
#include "platform/win32/registry/win32_autostart.h"
#include "platform/win32/text/win32_text_codec.h"
#include "platform/win32/win32_clipboard.h"
#include "platform/win32/win32_hotkey.h"
#include "platform/win32/win32_keyboard.h"
#include "platform/win32/win32_paths.h"
#include "platform/win32/win32_pointer.h"
#include "platform/win32/win32_screen.h"
#include "platform/win32/win32_session.h"
#include "platform/win32/win32_shell.h"
#include "platform/win32/win32_timers.h"
#include "platform/win32/win32_windows.h"

namespace plum {

// The ports on Windows.
class Win32Platform final : public Platform
{
public:
    Autostart &autostart() override { return m_autostart; }
    Clipboard &clipboard() override { return m_clipboard.get(m_window.get()); }
    GlobalHotkey &hotkey() override { return m_hotkey.get(m_window.get()); }
    JavaScript &javaScript() override { return m_javaScript; }
    Keyboard &keyboard() override { return m_keyboard; }
    Paths &paths() override { return m_paths; }
    Pointer &pointer() override { return m_pointer; }
    Screen &screen() override { return m_screen; }
    Session &session() override { return m_session.get(m_window.get()); }
    Shell &shell() override { return m_shell; }
    TextCodec &textCodec() override { return m_textCodec; }
    WaitableTimers &timers() override { return m_timers; }
    Windows &windows() override { return m_windows; }

    void onEndRequested(std::function<void()> end) override
    {
        if (!m_interrupted)
            m_interrupted = end;
        m_endRequests.get(m_window.get(), std::move(end), [this] { m_interrupted(); });
    }
    void onInterrupted(std::function<void()> heard) override { m_interrupted = std::move(heard); }
    std::unique_ptr<HandWatch> watchHand(const HandSigns &signs) override;
    void whenTrayAnswers(std::function<void()> then) override { then(); }
    bool registersComponents() const override { return true; }
    void releaseDesktop() override;

private:
    Win32Paths m_paths;
    Win32TextCodec m_textCodec;
    Win32Timers m_timers;
    JScript m_javaScript;
    Win32Autostart m_autostart{m_paths};
    Win32Keyboard m_keyboard;
    Win32Pointer m_pointer;
    Win32Screen m_screen;
    Win32Windows m_windows;
    Win32Shell m_shell{m_paths, m_textCodec};

    std::function<void()> m_interrupted;

    // The window comes before what uses it.
    Lazy<HiddenWindow> m_window;
    Lazy<Win32Clipboard> m_clipboard;
    Lazy<Win32Hotkey> m_hotkey;
    Lazy<Win32Session> m_session;
    Lazy<EndRequests> m_endRequests;
};

} // namespace plum
