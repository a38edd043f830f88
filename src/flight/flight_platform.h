#pragma once

#include "platform/clipboard.h"
#include "platform/desktop_windows.h"
#include "platform/javascript.h"
#include "platform/keyboard.h"
#include "platform/pointer.h"
#include "platform/session.h"
#include "platform/shell.h"
#include "platform/wrapped_platform.h"

namespace plum {

class FlightRecorder;

// A port that tells the recorder of each call that does something, and passes it on.
template <typename Port> class Recorded : public Port
{
public:
    Recorded(Platform &inner, FlightRecorder &recorder)
        : m_platform(inner)
        , m_recorder(recorder)
    {
    }

protected:
    Platform &m_platform; // its ports are asked for when they are first used: making some takes time
    FlightRecorder &m_recorder;
};

class RecordedClipboard final : public Recorded<Clipboard>
{
public:
    using Recorded::Recorded;
    QString text() override;
    void setText(const QString &text) override;
    void clear() override;
    std::optional<quint64> timesTaken() const override { return m_platform.clipboard().timesTaken(); }
    void outliveProcess() override { m_platform.clipboard().outliveProcess(); }
};

class RecordedJavaScript final : public Recorded<JavaScript>
{
public:
    using Recorded::Recorded;
    Result evaluate(const QString &program) override;
    void giveUp() override { m_platform.javaScript().giveUp(); }
};

class RecordedKeyboard final : public Recorded<Keyboard>
{
public:
    using Keyboard::typeText;
    using Recorded::Recorded;
    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void setStop(const StopSignal *stop) override { m_platform.keyboard().setStop(stop); }
    void releaseAll() override;
};

class RecordedPointer final : public Recorded<Pointer>
{
public:
    using Recorded::Recorded;
    QPoint position() override { return m_platform.pointer().position(); }
    bool isAskedUnseen() const override { return m_platform.pointer().isAskedUnseen(); }
    void moveTo(QPoint point) override;
    void buttonEvent(quint32 flags) override;
    void releaseAll() override;
};

class RecordedSession final : public Recorded<Session>
{
public:
    using Recorded::Recorded;
    Outcome lockScreen() override;
    Outcome monitorOff() override;
    Outcome logOff() override;
    Outcome shutDown() override;
    Outcome restart() override;
};

class RecordedWindows final : public Recorded<Windows>
{
public:
    using Recorded::Recorded;
    WindowHandle foreground() override { return m_platform.windows().foreground(); }
    WindowHandle underPointer() override { return m_platform.windows().underPointer(); }
    WindowHandle byTitle(const QString &title) override;
    QString title(WindowHandle window) override { return m_platform.windows().title(window); }
    WindowHandle own(quintptr id) override { return m_platform.windows().own(id); }
    WindowHandle topLevel(WindowHandle window) override { return m_platform.windows().topLevel(window); }
    std::vector<WindowHandle> stacking() override { return m_platform.windows().stacking(); }
    bool isOnScreen(WindowHandle window) override { return m_platform.windows().isOnScreen(window); }
    QRect rectangle(WindowHandle window) override { return m_platform.windows().rectangle(window); }
    void close(WindowHandle window) override;
    void activate(WindowHandle window) override;
    void hide(WindowHandle window) override;
    void show(WindowHandle window) override;
    void minimise(WindowHandle window) override;
    void maximise(WindowHandle window) override;
    void moveTo(WindowHandle window, QPoint corner) override;
    void bringHere(WindowHandle window) override;
    void setTopmost(WindowHandle window) override;
    std::unique_ptr<News> newsOfTitles() override { return m_platform.windows().newsOfTitles(); }
    std::unique_ptr<News> newsOfEnd(WindowHandle window) override
    {
        return m_platform.windows().newsOfEnd(window);
    }
};

class RecordedShell final : public Shell
{
public:
    RecordedShell(Shell &inner, FlightRecorder &recorder)
        : m_inner(inner)
        , m_recorder(recorder)
    {
    }
    bool open(const QString &target, const QString &parameters, ShowState state) override;
    bool startHelper(const QString &program, const QString &commandLine, ShowState state) override;
    QString desktopFolder() override { return m_inner.desktopFolder(); }
    QString shortcutTarget(const QString &path) override { return m_inner.shortcutTarget(path); }

private:
    Shell &m_inner;
    FlightRecorder &m_recorder;
};

// A platform whose ports tell the recorder what runs do with them.
class FlightPlatform final : public WrappedPlatform
{
public:
    FlightPlatform(Platform &inner, FlightRecorder &recorder)
        : WrappedPlatform(inner)
        , m_clipboard(inner, recorder)
        , m_javaScript(inner, recorder)
        , m_keyboard(inner, recorder)
        , m_pointer(inner, recorder)
        , m_session(inner, recorder)
        , m_windows(inner, recorder)
    {
    }

    Clipboard &clipboard() override { return m_clipboard; }
    JavaScript &javaScript() override { return m_javaScript; }
    Keyboard &keyboard() override { return m_keyboard; }
    Pointer &pointer() override { return m_pointer; }
    Session &session() override { return m_session; }
    Windows &windows() override { return m_windows; }

private:
    RecordedClipboard m_clipboard;
    RecordedJavaScript m_javaScript;
    RecordedKeyboard m_keyboard;
    RecordedPointer m_pointer;
    RecordedSession m_session;
    RecordedWindows m_windows;
};

} // namespace plum
