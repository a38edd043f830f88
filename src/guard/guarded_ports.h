#pragma once

#include "platform/clipboard.h"
#include "platform/desktop_windows.h"
#include "platform/javascript.h"
#include "platform/keyboard.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/pointer.h"
#include "platform/screen.h"
#include "platform/session.h"

namespace plum {

class Guard;

// The ports of a guarded platform. Those behind them are asked for when they are first used: making some
// takes time.
template <typename Port> class Guarded : public Port
{
public:
    Guarded(Platform &inner, Guard *const &guard)
        : m_platform(inner)
        , m_guard(guard)
    {
    }

protected:
    Platform &m_platform;
    Guard *const &m_guard;
};

class GuardedClipboard final : public Guarded<Clipboard>
{
public:
    using Guarded::Guarded;
    QString text() override;
    void setText(const QString &text) override;
    void clear() override;
    std::optional<quint64> timesTaken() const override { return m_platform.clipboard().timesTaken(); }
    void outliveProcess() override { m_platform.clipboard().outliveProcess(); }
};

class GuardedJavaScript final : public Guarded<JavaScript>
{
public:
    using Guarded::Guarded;
    Result evaluate(const QString &program) override;
};

// What is down may always be released.
class GuardedKeyboard final : public Guarded<Keyboard>
{
public:
    using Guarded::Guarded;
    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void releaseAll() override { m_platform.keyboard().releaseAll(); }
};

class GuardedPaths final : public Guarded<Paths>
{
public:
    using Guarded::Guarded;
    QString programFolder() const override { return m_platform.paths().programFolder(); }
    QString toSystem(const QString &path) const override { return m_platform.paths().toSystem(path); }
    bool interpretsNames() const override { return m_platform.paths().interpretsNames(); }
    bool mayRead(const QString &systemPath) const override;
    bool mayWrite(const QString &systemPath) const override;
};

class GuardedPointer final : public Guarded<Pointer>
{
public:
    using Guarded::Guarded;
    QPoint position() override;
    bool isAskedUnseen() const override { return m_platform.pointer().isAskedUnseen(); }
    void moveTo(QPoint point) override;
    void buttonEvent(quint32 flags) override;
    void releaseAll() override { m_platform.pointer().releaseAll(); }
};

class GuardedScreen final : public Guarded<Screen>
{
public:
    using Guarded::Guarded;
    QSize mainScreenSize() override { return m_platform.screen().mainScreenSize(); }
    QRect desktop() override { return m_platform.screen().desktop(); }
    Capture capture(const QRect &region) override;
    Capture capturePlainly(const QRect &region) override;
};

// A refused call counts as done: a run of edition 1 goes on after it, whatever a missing service would do.
class GuardedSession final : public Guarded<Session>
{
public:
    using Guarded::Guarded;
    Outcome lockScreen() override;
    Outcome monitorOff() override;
    Outcome logOff() override;
    Outcome shutDown() override;
    Outcome restart() override;
};

class GuardedWindows final : public Guarded<Windows>
{
public:
    using Guarded::Guarded;
    WindowHandle foreground() override;
    WindowHandle underPointer() override;
    WindowHandle byTitle(const QString &title) override;
    QString title(WindowHandle window) override;
    WindowHandle own(quintptr id) override { return m_platform.windows().own(id); }
    WindowHandle topLevel(WindowHandle window) override { return m_platform.windows().topLevel(window); }
    std::vector<WindowHandle> stacking() override;
    bool isOnScreen(WindowHandle window) override;
    QRect rectangle(WindowHandle window) override;
    void close(WindowHandle window) override;
    void activate(WindowHandle window) override;
    void hide(WindowHandle window) override;
    void show(WindowHandle window) override;
    void minimise(WindowHandle window) override;
    void maximise(WindowHandle window) override;
    void moveTo(WindowHandle window, QPoint corner) override;
    void bringHere(WindowHandle window) override;
    void setTopmost(WindowHandle window) override;
    // Whoever hears them has to look, and that is asked about.
    std::unique_ptr<News> newsOfTitles() override { return m_platform.windows().newsOfTitles(); }
    std::unique_ptr<News> newsOfEnd(WindowHandle window) override
    {
        return m_platform.windows().newsOfEnd(window);
    }
};

} // namespace plum
