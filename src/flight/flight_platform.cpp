#include "flight/flight_platform.h"

#include "flight/flight_recorder.h"

#include <QScopeGuard>

#include <array>

namespace plum {

using Kind = FlightDeed::Kind;

namespace {

// Letters and digits are what they type; which keys were pressed is in the line, unless that is a secret.
bool isOfText(quint8 virtualKey)
{
    return (virtualKey >= '0' && virtualKey <= '9') || (virtualKey >= 'A' && virtualKey <= 'Z');
}

template <typename... Numbers> QStringList textsOf(Numbers... numbers)
{
    return {QString::number(numbers)...};
}

struct ButtonRow
{
    quint32 flag;
    Kind kind;
};

constexpr std::array buttonRows{ButtonRow{Pointer::LeftDown, Kind::LeftDown},
    ButtonRow{Pointer::LeftUp, Kind::LeftUp}, ButtonRow{Pointer::RightDown, Kind::RightDown},
    ButtonRow{Pointer::RightUp, Kind::RightUp}};

} // namespace

QString RecordedClipboard::text()
{
    QString text = m_platform.clipboard().text();
    m_recorder.addSecret(text);
    m_recorder.deed({Kind::ClipboardRead, {QString::number(text.size()), m_recorder.unlessSecret(text)}});
    return text;
}

void RecordedClipboard::setText(const QString &text)
{
    m_recorder.deed({Kind::ClipboardSet, {QString::number(text.size()), m_recorder.unlessSecret(text)}});
    m_platform.clipboard().setText(text);
}

void RecordedClipboard::clear()
{
    m_recorder.deed({Kind::ClipboardCleared});
    m_platform.clipboard().clear();
}

JavaScript::Result RecordedJavaScript::evaluate(const QString &program)
{
    Result result = m_platform.javaScript().evaluate(program);
    QStringList values = textsOf(program.size());
    if (!result.ok)
        values += result.value;
    m_recorder.deed({result.ok ? Kind::JavaScriptEvaluated : Kind::JavaScriptFailed, std::move(values)});
    return result;
}

void RecordedKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    const QString key = isOfText(virtualKey)
        ? m_recorder.unlessSecret(QString(QLatin1Char(static_cast<char>(virtualKey))))
        : QString::number(virtualKey);
    m_recorder.deed({(flags & KeyUp) != 0 ? Kind::KeyUp : Kind::KeyDown, {key}});
    m_platform.keyboard().keyEvent(virtualKey, flags);
}

bool RecordedKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    qsizetype typed = 0;
    // Also where the run is left in the middle.
    const auto tell = qScopeGuard([&] { m_recorder.deed({Kind::Typed, textsOf(typed)}); });
    return m_platform.keyboard().typeText(text, [&] {
        before();
        ++typed;
    });
}

void RecordedKeyboard::releaseAll()
{
    m_recorder.deed({Kind::KeysLetGo});
    m_platform.keyboard().releaseAll();
}

void RecordedPointer::moveTo(QPoint point)
{
    m_recorder.deed({Kind::PointerMoved, textsOf(point.x(), point.y())});
    m_recorder.noteMotion(point);
    m_platform.pointer().moveTo(point);
}

void RecordedPointer::buttonEvent(quint32 flags)
{
    for (const ButtonRow &row : buttonRows) {
        if ((flags & row.flag) != 0)
            m_recorder.deed({row.kind});
    }
    m_platform.pointer().buttonEvent(flags);
}

void RecordedPointer::releaseAll()
{
    m_recorder.deed({Kind::ButtonsLetGo});
    m_platform.pointer().releaseAll();
}

Session::Outcome RecordedSession::lockScreen()
{
    const Outcome outcome = m_platform.session().lockScreen();
    m_recorder.deed({outcome == Outcome::Done ? Kind::ScreenLocked : Kind::ScreenNotLocked});
    return outcome;
}

Session::Outcome RecordedSession::monitorOff()
{
    const Outcome outcome = m_platform.session().monitorOff();
    m_recorder.deed({outcome == Outcome::Done ? Kind::MonitorSwitchedOff : Kind::MonitorNotSwitchedOff});
    return outcome;
}

Session::Outcome RecordedSession::logOff()
{
    m_recorder.deed({Kind::LoggedOff});
    return m_platform.session().logOff();
}

Session::Outcome RecordedSession::shutDown()
{
    m_recorder.deed({Kind::ShutDown});
    return m_platform.session().shutDown();
}

Session::Outcome RecordedSession::restart()
{
    m_recorder.deed({Kind::Restarted});
    return m_platform.session().restart();
}

WindowHandle RecordedWindows::byTitle(const QString &title)
{
    const WindowHandle window = m_platform.windows().byTitle(title);
    if (window != 0)
        m_recorder.seen({.kind = FlightEntry::Sight::Window, .what = title, .window = window});
    return window;
}

void RecordedWindows::close(WindowHandle window)
{
    m_recorder.deed({Kind::WindowClosed, textsOf(window)});
    m_platform.windows().close(window);
}

void RecordedWindows::activate(WindowHandle window)
{
    m_recorder.deed({Kind::WindowActivated, textsOf(window)});
    m_platform.windows().activate(window);
}

void RecordedWindows::hide(WindowHandle window)
{
    m_recorder.deed({Kind::WindowHidden, textsOf(window)});
    m_platform.windows().hide(window);
}

void RecordedWindows::show(WindowHandle window)
{
    m_recorder.deed({Kind::WindowShown, textsOf(window)});
    m_platform.windows().show(window);
}

void RecordedWindows::minimise(WindowHandle window)
{
    m_recorder.deed({Kind::WindowMinimised, textsOf(window)});
    m_platform.windows().minimise(window);
}

void RecordedWindows::maximise(WindowHandle window)
{
    m_recorder.deed({Kind::WindowMaximised, textsOf(window)});
    m_platform.windows().maximise(window);
}

void RecordedWindows::moveTo(WindowHandle window, QPoint corner)
{
    m_recorder.deed({Kind::WindowMoved, textsOf(window, corner.x(), corner.y())});
    m_platform.windows().moveTo(window, corner);
}

void RecordedWindows::bringHere(WindowHandle window)
{
    m_recorder.deed({Kind::WindowFetched, textsOf(window)});
    m_platform.windows().bringHere(window);
}

void RecordedWindows::setTopmost(WindowHandle window)
{
    m_recorder.deed({Kind::WindowKeptAbove, textsOf(window)});
    m_platform.windows().setTopmost(window);
}

bool RecordedShell::open(const QString &target, const QString &parameters, ShowState state)
{
    const bool isOpened = m_inner.open(target, parameters, state);
    m_recorder.deed(
        {isOpened ? Kind::Opened : Kind::NotOpened, {QString(target + u' ' + parameters).trimmed()}});
    return isOpened;
}

bool RecordedShell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    const bool isStarted = m_inner.startHelper(program, commandLine, state);
    m_recorder.deed(
        {isStarted ? Kind::Started : Kind::NotStarted, {QString(program + u' ' + commandLine).trimmed()}});
    return isStarted;
}

} // namespace plum
