#pragma once

#include "platform/autostart.h"
#include "platform/clipboard.h"
#include "platform/desktop_windows.h"
#include "platform/global_hotkey.h"
#include "platform/javascript.h"
#include "platform/keyboard.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/pointer.h"
#include "platform/screen.h"
#include "platform/session.h"
#include "platform/shell.h"
#include "platform/text_codec.h"
#include "platform/waitable_timers.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <functional>
#include <vector>

namespace plum::recording {

// What happened, in order, one line an event: "mouse 2", "key 65 1", "wait 10", "move 100 200".
class Log
{
public:
    void add(const QString &line)
    {
        m_lines += line;
        if (onAdd)
            onAdd(line);
    }
    QStringList lines() const { return m_lines; }
    void clear() { m_lines.clear(); }

    std::function<void(const QString &line)> onAdd;

private:
    QStringList m_lines;
};

class RecordingPointer final : public Pointer
{
public:
    explicit RecordingPointer(Log &log)
        : m_log(log)
    {
    }

    QPoint position() override { return at; }
    void moveTo(QPoint point) override;
    void buttonEvent(quint32 flags) override;
    void releaseAll() override { m_log.add(QStringLiteral("mouse release all")); }

    QPoint at;
    QRect bounds; // of the desktop, to which points are clipped; without it they are left as they are

private:
    Log &m_log;
};

class RecordingKeyboard final : public Keyboard
{
public:
    explicit RecordingKeyboard(Log &log)
        : m_log(log)
    {
    }

    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void setStop(const StopSignal *signal) override { stop = signal; }
    void releaseAll() override { m_log.add(QStringLiteral("keyboard release all")); }

    const StopSignal *stop = nullptr;

private:
    Log &m_log;
};

class RecordingClipboard final : public Clipboard
{
public:
    explicit RecordingClipboard(Log &log)
        : m_log(log)
    {
    }

    QString text() override { return content; }
    void setText(const QString &text) override;
    void clear() override;
    std::optional<quint64> timesTaken() const override
    {
        return askedHowOftenTaken ? askedHowOftenTaken() : std::nullopt;
    }
    void outliveProcess() override { m_log.add(QStringLiteral("clipboard outlive")); }

    QString content;
    std::function<std::optional<quint64>()> askedHowOftenTaken;

private:
    Log &m_log;
};

// Windows that a test tells of. Those whose rectangle is known behave as the port says; every call is written
// down, whatever its handle.
class RecordingWindows final : public Windows
{
public:
    explicit RecordingWindows(Log &log)
        : m_log(log)
    {
    }

    WindowHandle foreground() override { return foregroundWindow; }
    WindowHandle underPointer() override { return windowUnderPointer; }
    WindowHandle byTitle(const QString &title) override;
    QString title(WindowHandle window) override { return titles.key(window); }
    std::vector<WindowHandle> stacking() override;
    bool isOnScreen(WindowHandle) override { return windowsAreOnScreen; }
    QRect rectangle(WindowHandle window) override { return rectangles.value(window); }
    void close(WindowHandle window) override { record("close", window); }
    void activate(WindowHandle window) override;
    void hide(WindowHandle window) override;
    void show(WindowHandle window) override;
    void minimise(WindowHandle window) override;
    void maximise(WindowHandle window) override;
    void moveTo(WindowHandle window, QPoint corner) override;
    void bringHere(WindowHandle window) override { record("bring here", window); }
    void setTopmost(WindowHandle window) override { record("topmost", window); }
    std::unique_ptr<News> newsOfTitles() override { return nullptr; }
    std::unique_ptr<News> newsOfEnd(WindowHandle) override { return nullptr; }

    WindowHandle foregroundWindow = 0;
    WindowHandle windowUnderPointer = 0;
    bool windowsAreOnScreen = true;
    QHash<QString, WindowHandle> titles;
    QHash<WindowHandle, QRect> rectangles;
    std::vector<WindowHandle> order; // the one above all others first

private:
    void record(const char *what, WindowHandle window);
    void raise(WindowHandle window);

    Log &m_log;
    QSet<WindowHandle> m_hidden;
    QSet<WindowHandle> m_minimised;
};

// A screen whose pixels a test paints.
class RecordingScreen final : public Screen
{
public:
    QSize mainScreenSize() override { return size; }
    QRect desktop() override { return {QPoint(), size}; }
    Capture capture(const QRect &region) override { return captureFrom(pixels, region); }
    Capture capturePlainly(const QRect &region) override
    {
        return captureFrom(plainPixels.empty() ? pixels : plainPixels, region);
    }

    QSize size{0, 0};
    std::vector<quint32> pixels; // size.width() * size.height()
    std::vector<quint32> plainPixels; // those behind layered windows; empty where there are none

private:
    Capture captureFrom(const std::vector<quint32> &source, const QRect &region);

    std::vector<quint32> m_captured;
};

class RecordingShell final : public Shell
{
public:
    explicit RecordingShell(Log &log)
        : m_log(log)
    {
    }

    bool open(const QString &target, const QString &parameters, ShowState state) override;
    bool startHelper(const QString &program, const QString &commandLine, ShowState state) override;
    QString desktopFolder() override { return desktop; }
    QString shortcutTarget(const QString &path) override { return shortcuts.value(path, path); }

    QString desktop;
    QHash<QString, QString> shortcuts;
    bool succeeds = true;

private:
    Log &m_log;
};

class RecordingSession final : public Session
{
public:
    explicit RecordingSession(Log &log)
        : m_log(log)
    {
    }

    Outcome lockScreen() override { return record("lock"); }
    Outcome monitorOff() override { return record("monitor off"); }
    Outcome logOff() override { return record("log off"); }
    Outcome shutDown() override { return record("shut down"); }
    Outcome restart() override { return record("restart"); }

    Outcome outcome = Outcome::Done;

private:
    Outcome record(const char *what);

    Log &m_log;
};

class RecordingHotkey final : public GlobalHotkey
{
public:
    explicit RecordingHotkey(Log &log)
        : m_log(log)
    {
    }

    bool registerHotkey(quint32 modifiers, quint32 virtualKey) override;
    void unregisterHotkey() override;
    void giveKeysTo(WindowHandle) override { m_log.add(QStringLiteral("hotkey give keys")); }
    void takeKeysFrom(WindowHandle) override { m_log.add(QStringLiteral("hotkey take keys")); }
    quint32 now() override { return time; }

    bool succeeds = true;
    quint32 time = 0;

private:
    Log &m_log;
};

class RecordingJavaScript final : public JavaScript
{
public:
    explicit RecordingJavaScript(Log &log)
        : m_log(log)
    {
    }

    Result evaluate(const QString &program) override;

    Result answer{true, {}};

private:
    Log &m_log;
};

// UTF-8 for the system; Latin-1 stands in for GB2312, so that a test sees which one was asked for.
class RecordingTextCodec final : public TextCodec
{
public:
    QString fromSystem(QByteArrayView bytes) override;
    QByteArray toSystem(QStringView text) override;
    QString fromGb2312(QByteArrayView bytes) override;
    QString fromUtf8(QByteArrayView bytes) override;
};

class RecordingPaths final : public Paths
{
public:
    QString programFolder() const override { return folder; }
    QString toSystem(const QString &path) const override;
    bool interpretsNames() const override { return namesAreInterpreted; }

    QString folder = QStringLiteral("C:\\plum");
    QString root; // the folder that scripts take for the whole disk; empty for the machine's own
    bool namesAreInterpreted = false;

    // What a name is on this disk; empty: itself.
    std::function<QString(const QString &path)> onDisk;
};

// Timers that are due at the `pumps`th call of waitOrPump. `onPump` stands for the user interface.
class RecordingTimers final : public WaitableTimers
{
public:
    explicit RecordingTimers(Log &log)
        : m_log(log)
    {
    }

    Created create(const QString &name) override;
    void set(Handle timer, qint64 dueTime) override;
    bool waitOrPump(Handle timer) override;
    void close(Handle timer) override;

    int pumps = 1;
    bool hasRoom = true; // for another timer
    std::function<void()> onPump;

private:
    Log &m_log;
    QHash<Handle, QString> m_names;
    QHash<Handle, int> m_pumped;
    Handle m_last = 0;
};

// A switch that works.
class RecordingAutostart final : public Autostart
{
public:
    explicit RecordingAutostart(Log &log)
        : m_log(log)
    {
    }

    bool isOn() const override { return m_isOn; }
    bool setOn(bool isOn) override
    {
        m_log.add(isOn ? QStringLiteral("autostart on") : QStringLiteral("autostart off"));
        m_isOn = isOn && canBeSet;
        return m_isOn == isOn;
    }

    bool canBeSet = true;

private:
    Log &m_log;
    bool m_isOn = false;
};

class RecordingPlatform final : public Platform
{
public:
    RecordingPlatform();

    RecordingAutostart &autostart() override { return m_autostart; }
    RecordingClipboard &clipboard() override { return m_clipboard; }
    RecordingHotkey &hotkey() override { return m_hotkey; }
    RecordingJavaScript &javaScript() override { return m_javaScript; }
    RecordingKeyboard &keyboard() override { return m_keyboard; }
    RecordingPaths &paths() override { return m_paths; }
    RecordingPointer &pointer() override { return m_pointer; }
    RecordingScreen &screen() override { return m_screen; }
    RecordingSession &session() override { return m_session; }
    RecordingShell &shell() override { return m_shell; }
    RecordingTextCodec &textCodec() override { return m_textCodec; }
    RecordingTimers &timers() override { return m_timers; }
    RecordingWindows &windows() override { return m_windows; }
    void onEndRequested(std::function<void()> end) override { endRequested = std::move(end); }
    void whenTrayAnswers(std::function<void()> then) override { then(); }
    bool registersComponents() const override { return hasComponents; }

    bool hasComponents = false;
    void releaseDesktop() override;

    Log log;
    std::function<void()> endRequested;

private:
    RecordingAutostart m_autostart;
    RecordingClipboard m_clipboard;
    RecordingHotkey m_hotkey;
    RecordingJavaScript m_javaScript;
    RecordingKeyboard m_keyboard;
    RecordingPaths m_paths;
    RecordingPointer m_pointer;
    RecordingScreen m_screen;
    RecordingSession m_session;
    RecordingShell m_shell;
    RecordingTextCodec m_textCodec;
    RecordingTimers m_timers;
    RecordingWindows m_windows;
};

} // namespace plum::recording
