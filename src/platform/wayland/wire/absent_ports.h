#pragma once

#include "platform/desktop_windows.h"
#include "platform/global_hotkey.h"

#include <QDeadlineTimer>

namespace plum {

// The windows of a compositor that tells nobody of them.
class AbsentWindows final : public Windows
{
public:
    WindowHandle foreground() override { return 0; }
    WindowHandle underPointer() override { return 0; }
    WindowHandle byTitle(const QString &) override { return 0; }
    QString title(WindowHandle) override { return {}; }
    std::vector<WindowHandle> stacking() override { return {}; }
    // What is shown counts as seen.
    bool isOnScreen(WindowHandle) override { return true; }
    QRect rectangle(WindowHandle) override { return {}; }
    void close(WindowHandle) override { }
    void activate(WindowHandle) override { }
    void hide(WindowHandle) override { }
    void show(WindowHandle) override { }
    void minimise(WindowHandle) override { }
    void maximise(WindowHandle) override { }
    void moveTo(WindowHandle, QPoint) override { }
    void bringHere(WindowHandle) override { }
    void setTopmost(WindowHandle) override { }
    std::unique_ptr<News> newsOfTitles() override { return nullptr; }
    std::unique_ptr<News> newsOfEnd(WindowHandle) override { return nullptr; }
};

// The hotkey where no key can be had from the compositor.
class AbsentHotkey final : public GlobalHotkey
{
public:
    bool registerHotkey(quint32, quint32) override { return false; }
    void unregisterHotkey() override { }
    void giveKeysTo(WindowHandle) override { }
    void takeKeysFrom(WindowHandle) override { }
    quint32 now() override
    {
        return static_cast<quint32>(QDeadlineTimer::current(Qt::PreciseTimer).deadline());
    }
};

} // namespace plum
