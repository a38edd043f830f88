#pragma once

#include "platform/lazy.h"
#include "platform/linux/file_paths.h"
#include "platform/linux/linux_text_codec.h"
#include "platform/linux/loaded_javascript.h"
#include "platform/linux/process_signals.h"
#include "platform/linux/timer_descriptors.h"
#include "platform/linux/tray_host.h"
#include "platform/platform.h"
#include "platform/x11/clipboard/x11_clipboard.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/keyboard/x11_hotkey.h"
#include "platform/x11/keyboard/x11_keyboard.h"
#include "platform/x11/keyboard/x11_keymap.h"
#include "platform/x11/windows/x11_windows.h"
#include "platform/x11/x11_pointer.h"
#include "platform/x11/x11_screen.h"
#include "platform/x11/x11_session.h"
#include "platform/x11/x11_shell.h"

#include <QSocketNotifier>

namespace plum {

// The ports on Linux with an X server; without one, whatever needs a display does nothing.
class X11Platform final : public Platform
{
public:
    explicit X11Platform(const QString &programPath);

    Clipboard &clipboard() override { return m_clipboard.get(connection()); }
    GlobalHotkey &hotkey() override { return m_hotkey.get(connection(), keymap()); }
    JavaScript &javaScript() override { return m_javaScript; }
    Keyboard &keyboard() override { return m_keyboard.get(connection(), keymap()); }
    Paths &paths() override { return m_paths; }
    Pointer &pointer() override { return m_pointer.get(connection()); }
    Screen &screen() override { return m_screen.get(connection()); }
    Session &session() override { return m_session.get(connection()); }
    Shell &shell() override { return m_shell.get(m_paths); }
    TextCodec &textCodec() override { return m_textCodec; }
    WaitableTimers &timers() override { return m_timers; }
    Windows &windows() override { return m_windows.get(connection()); }

    void onEndRequested(std::function<void()> end) override
    {
        m_endingSignals.get(endingSignals(), std::move(end));
    }
    void onFetchRequested(std::function<void()> fetch) override
    {
        m_fetchingSignal.get(std::vector{fetchingSignal()}, std::move(fetch));
    }
    void requestFetch(qint64 process) override;
    void whenTrayAnswers(std::function<void()> then) override { whenTrayHostAnswers(then); }
    bool registersComponents() const override { return false; }
    void releaseDesktop() override;

private:
    X11Connection &connection();
    X11Keymap &keymap() { return m_keymap.get(connection()); }

    FilePaths m_paths;
    LinuxTextCodec m_textCodec;
    TimerDescriptors m_timers;
    Lazy<ProcessSignals> m_endingSignals;
    Lazy<ProcessSignals> m_fetchingSignal;

    // The connection and the map of the keyboard come before the ports that use them.
    Lazy<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_connectionEvents;
    Lazy<X11Keymap> m_keymap;
    Lazy<X11Clipboard> m_clipboard;
    Lazy<X11Hotkey> m_hotkey;
    LoadedJavaScript m_javaScript;
    Lazy<X11Keyboard> m_keyboard;
    Lazy<X11Pointer> m_pointer;
    Lazy<X11Screen> m_screen;
    Lazy<X11Session> m_session;
    Lazy<X11Shell> m_shell;
    Lazy<X11Windows> m_windows;
};

} // namespace plum
