#pragma once

#include "platform/lazy.h"
#include "platform/linux/file_paths.h"
#include "platform/linux/linux_text_codec.h"
#include "platform/linux/loaded_javascript.h"
#include "platform/linux/process_signals.h"
#include "platform/linux/session_name.h"
#include "platform/linux/timer_descriptors.h"
#include "platform/linux/tray_host.h"
#include "platform/linux/xdg_autostart.h"
#include "platform/platform.h"

#include <csignal>

namespace plum {

// The ports that are the same on every Linux desktop, whatever draws it.
class LinuxPlatform : public Platform
{
public:
    explicit LinuxPlatform(const QString &programPath)
        : m_paths(programPath)
        , m_autostart(m_paths)
    {
    }

    Autostart &autostart() final { return m_autostart; }
    JavaScript &javaScript() final { return m_javaScript; }
    Paths &paths() final { return m_paths; }
    TextCodec &textCodec() final { return m_textCodec; }
    WaitableTimers &timers() final { return m_timers; }

    // Hang-up, interrupt and terminate ask a process to end.
    void onEndRequested(std::function<void()> end) final
    {
        m_endingSignals.get(std::vector{SIGHUP, SIGTERM}, end);
        if (!m_interrupted)
            m_interrupted = std::move(end);
        m_interruptSignal.get(std::vector{SIGINT}, [this] { m_interrupted(); });
    }
    void onInterrupted(std::function<void()> heard) final { m_interrupted = std::move(heard); }
    void whenTrayAnswers(std::function<void()> then) final { whenTrayHostAnswers(then); }
    std::unique_ptr<LauncherName> takeLauncherName(const LauncherWishes &wishes) final
    {
        return takeSessionName(m_paths.programFolder(), wishes);
    }
    bool registersComponents() const final { return false; }

private:
    FilePaths m_paths;
    XdgAutostart m_autostart;
    LinuxTextCodec m_textCodec;
    TimerDescriptors m_timers;
    std::function<void()> m_interrupted;
    Lazy<ProcessSignals> m_endingSignals;
    Lazy<ProcessSignals> m_interruptSignal;
    LoadedJavaScript m_javaScript;
};

} // namespace plum
