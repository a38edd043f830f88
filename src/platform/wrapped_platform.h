#pragma once

#include "platform/platform.h"

#include <utility>

namespace plum {

// A platform that passes everything on to another one. What watches or limits the runs on a platform derives
// from it and replaces the ports that it is about, each with one that passes on what it lets through.
class WrappedPlatform : public Platform
{
public:
    explicit WrappedPlatform(Platform &inner)
        : m_inner(inner)
    {
    }

    Autostart &autostart() override { return m_inner.autostart(); }
    Clipboard &clipboard() override { return m_inner.clipboard(); }
    GlobalHotkey &hotkey() override { return m_inner.hotkey(); }
    JavaScript &javaScript() override { return m_inner.javaScript(); }
    Keyboard &keyboard() override { return m_inner.keyboard(); }
    Paths &paths() override { return m_inner.paths(); }
    Pointer &pointer() override { return m_inner.pointer(); }
    Screen &screen() override { return m_inner.screen(); }
    Session &session() override { return m_inner.session(); }
    Shell &shell() override { return m_inner.shell(); }
    TextCodec &textCodec() override { return m_inner.textCodec(); }
    WaitableTimers &timers() override { return m_inner.timers(); }
    Windows &windows() override { return m_inner.windows(); }

    void onEndRequested(std::function<void()> end) override { m_inner.onEndRequested(std::move(end)); }
    void onInterrupted(std::function<void()> heard) override { m_inner.onInterrupted(std::move(heard)); }
    std::unique_ptr<HandWatch> watchHand(const HandSigns &signs) override { return m_inner.watchHand(signs); }
    void whenTrayAnswers(std::function<void()> then) override { m_inner.whenTrayAnswers(std::move(then)); }
    std::unique_ptr<LauncherName> takeLauncherName(const LauncherWishes &wishes) override
    {
        return m_inner.takeLauncherName(wishes);
    }
    bool registersComponents() const override { return m_inner.registersComponents(); }
    void releaseDesktop() override { m_inner.releaseDesktop(); }

protected:
    Platform &inner() const { return m_inner; }

private:
    Platform &m_inner;
};

} // namespace plum
