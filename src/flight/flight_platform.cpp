#include "flight/flight_platform.h"

#include "flight/flight_recorder.h"
#include "flight/flight_words.h"

#include <QScopeGuard>

namespace plum {

namespace {

// Letters and digits are what they type; which keys were pressed is in the line, unless that is a secret.
bool isOfText(quint8 virtualKey)
{
    return (virtualKey >= '0' && virtualKey <= '9') || (virtualKey >= 'A' && virtualKey <= 'Z');
}

QString buttonText(quint32 flags)
{
    struct Row
    {
        quint32 flag;
        const char *text;
    };
    static constexpr std::array rows{
        Row{Pointer::LeftDown, QT_TRANSLATE_NOOP("plum::FlightWords", "left down")},
        Row{Pointer::LeftUp, QT_TRANSLATE_NOOP("plum::FlightWords", "left up")},
        Row{Pointer::RightDown, QT_TRANSLATE_NOOP("plum::FlightWords", "right down")},
        Row{Pointer::RightUp, QT_TRANSLATE_NOOP("plum::FlightWords", "right up")}};
    QStringList texts;
    for (const Row &row : rows) {
        if ((flags & row.flag) != 0)
            texts += FlightWords::tr(row.text);
    }
    return texts.join(FlightWords::tr(", "));
}

QString outcomeText(Session::Outcome outcome)
{
    return outcome == Session::Outcome::Done ? QString() : FlightWords::tr(" (not possible)");
}

} // namespace

QString RecordedClipboard::text()
{
    QString text = m_platform.clipboard().text();
    m_recorder.addSecret(text);
    m_recorder.deed(FlightWords::tr("clipboard read: %1 characters, %2")
                        .arg(text.size())
                        .arg(m_recorder.unlessSecret(text)));
    return text;
}

void RecordedClipboard::setText(const QString &text)
{
    m_recorder.deed(FlightWords::tr("clipboard set: %1 characters, %2")
                        .arg(text.size())
                        .arg(m_recorder.unlessSecret(text)));
    m_platform.clipboard().setText(text);
}

void RecordedClipboard::clear()
{
    m_recorder.deed(FlightWords::tr("clipboard cleared"));
    m_platform.clipboard().clear();
}

JavaScript::Result RecordedJavaScript::evaluate(const QString &program)
{
    const Result result = m_platform.javaScript().evaluate(program);
    m_recorder.deed(
        FlightWords::tr("JavaScript of %1 characters: %2")
            .arg(program.size())
            .arg(result.ok ? FlightWords::tr("evaluated") : FlightWords::tr("failed, %1").arg(result.value)));
    return result;
}

void RecordedKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    const QString key = isOfText(virtualKey)
        ? m_recorder.unlessSecret(QString(QLatin1Char(static_cast<char>(virtualKey))))
        : QString::number(virtualKey);
    m_recorder.deed(FlightWords::tr("key %1 %2")
                        .arg(key, (flags & KeyUp) != 0 ? FlightWords::tr("up") : FlightWords::tr("down")));
    m_platform.keyboard().keyEvent(virtualKey, flags);
}

bool RecordedKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    qsizetype typed = 0;
    // Also where the run is left in the middle.
    const auto tell
        = qScopeGuard([&] { m_recorder.deed(FlightWords::tr("typed %1 characters").arg(typed)); });
    return m_platform.keyboard().typeText(text, [&] {
        before();
        ++typed;
    });
}

void RecordedKeyboard::releaseAll()
{
    m_recorder.deed(FlightWords::tr("every key let go"));
    m_platform.keyboard().releaseAll();
}

void RecordedPointer::moveTo(QPoint point)
{
    m_recorder.deed(FlightWords::tr("pointer to %1:%2").arg(point.x()).arg(point.y()));
    m_recorder.noteMotion(point);
    m_platform.pointer().moveTo(point);
}

void RecordedPointer::buttonEvent(quint32 flags)
{
    m_recorder.deed(FlightWords::tr("button %1").arg(buttonText(flags)));
    m_platform.pointer().buttonEvent(flags);
}

void RecordedPointer::releaseAll()
{
    m_recorder.deed(FlightWords::tr("every button let go"));
    m_platform.pointer().releaseAll();
}

Session::Outcome RecordedSession::lockScreen()
{
    const Outcome outcome = m_platform.session().lockScreen();
    m_recorder.deed(FlightWords::tr("screen locked") + outcomeText(outcome));
    return outcome;
}

Session::Outcome RecordedSession::monitorOff()
{
    const Outcome outcome = m_platform.session().monitorOff();
    m_recorder.deed(FlightWords::tr("monitor switched off") + outcomeText(outcome));
    return outcome;
}

Session::Outcome RecordedSession::logOff()
{
    m_recorder.deed(FlightWords::tr("log off"));
    return m_platform.session().logOff();
}

Session::Outcome RecordedSession::shutDown()
{
    m_recorder.deed(FlightWords::tr("shut down"));
    return m_platform.session().shutDown();
}

Session::Outcome RecordedSession::restart()
{
    m_recorder.deed(FlightWords::tr("restart"));
    return m_platform.session().restart();
}

void RecordedWindows::tell(const char *what, WindowHandle window)
{
    m_recorder.deed(FlightWords::tr("window %1 %2").arg(window).arg(FlightWords::tr(what)));
}

void RecordedWindows::close(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "asked to close"), window);
    m_platform.windows().close(window);
}

void RecordedWindows::activate(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "activated"), window);
    m_platform.windows().activate(window);
}

void RecordedWindows::hide(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "hidden"), window);
    m_platform.windows().hide(window);
}

void RecordedWindows::show(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "shown"), window);
    m_platform.windows().show(window);
}

void RecordedWindows::minimise(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "minimised"), window);
    m_platform.windows().minimise(window);
}

void RecordedWindows::maximise(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "maximised"), window);
    m_platform.windows().maximise(window);
}

void RecordedWindows::moveTo(WindowHandle window, QPoint corner)
{
    m_recorder.deed(FlightWords::tr("window %1 moved to %2:%3").arg(window).arg(corner.x()).arg(corner.y()));
    m_platform.windows().moveTo(window, corner);
}

void RecordedWindows::bringHere(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "fetched to this desktop"), window);
    m_platform.windows().bringHere(window);
}

void RecordedWindows::setTopmost(WindowHandle window)
{
    tell(QT_TRANSLATE_NOOP("plum::FlightWords", "kept above all others"), window);
    m_platform.windows().setTopmost(window);
}

bool RecordedShell::open(const QString &target, const QString &parameters, ShowState state)
{
    const bool isOpened = m_inner.open(target, parameters, state);
    m_recorder.deed(FlightWords::tr("opened %1 %2").arg(target, parameters).trimmed()
        + (isOpened ? QString() : FlightWords::tr(" (failed)")));
    return isOpened;
}

bool RecordedShell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    const bool isStarted = m_inner.startHelper(program, commandLine, state);
    m_recorder.deed(FlightWords::tr("started %1 %2").arg(program, commandLine)
        + (isStarted ? QString() : FlightWords::tr(" (failed)")));
    return isStarted;
}

} // namespace plum
