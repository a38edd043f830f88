#include "flight/flight_platform.h"

#include "flight/flight_recorder.h"

namespace plum {

using namespace Qt::StringLiterals;

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
        QStringView text;
    };
    static constexpr std::array rows{Row{Pointer::LeftDown, u"left down"}, Row{Pointer::LeftUp, u"left up"},
        Row{Pointer::RightDown, u"right down"}, Row{Pointer::RightUp, u"right up"}};
    QStringList texts;
    for (const Row &row : rows) {
        if ((flags & row.flag) != 0)
            texts += row.text.toString();
    }
    return texts.join(u", ");
}

QString outcomeText(Session::Outcome outcome)
{
    return outcome == Session::Outcome::Done ? QString() : u" (not possible)"_s;
}

} // namespace

QString RecordedClipboard::text()
{
    QString text = m_platform.clipboard().text();
    m_recorder.addSecret(text);
    m_recorder.deed(
        u"clipboard read: %1 characters, %2"_s.arg(text.size()).arg(m_recorder.unlessSecret(text)));
    return text;
}

void RecordedClipboard::setText(const QString &text)
{
    m_recorder.deed(
        u"clipboard set: %1 characters, %2"_s.arg(text.size()).arg(m_recorder.unlessSecret(text)));
    m_platform.clipboard().setText(text);
}

void RecordedClipboard::clear()
{
    m_recorder.deed(u"clipboard cleared"_s);
    m_platform.clipboard().clear();
}

JavaScript::Result RecordedJavaScript::evaluate(const QString &program)
{
    const Result result = m_platform.javaScript().evaluate(program);
    m_recorder.deed(u"JavaScript of %1 characters: %2"_s.arg(program.size())
                        .arg(result.ok ? u"evaluated"_s : u"failed, "_s + result.value));
    return result;
}

void RecordedKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    const QString key = isOfText(virtualKey)
        ? m_recorder.unlessSecret(QString(QLatin1Char(static_cast<char>(virtualKey))))
        : QString::number(virtualKey);
    m_recorder.deed(u"key %1 %2"_s.arg(key, (flags & KeyUp) != 0 ? u"up"_s : u"down"_s));
    m_platform.keyboard().keyEvent(virtualKey, flags);
}

bool RecordedKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    qsizetype typed = 0;
    const bool isWhole = m_platform.keyboard().typeText(text, [&] {
        before();
        ++typed;
    });
    m_recorder.deed(u"typed %1 characters"_s.arg(typed));
    return isWhole;
}

void RecordedKeyboard::releaseAll()
{
    m_recorder.deed(u"every key let go"_s);
    m_platform.keyboard().releaseAll();
}

void RecordedPointer::moveTo(QPoint point)
{
    m_recorder.deed(u"pointer to %1:%2"_s.arg(point.x()).arg(point.y()));
    m_platform.pointer().moveTo(point);
}

void RecordedPointer::buttonEvent(quint32 flags)
{
    m_recorder.deed(u"button "_s + buttonText(flags));
    m_platform.pointer().buttonEvent(flags);
}

void RecordedPointer::releaseAll()
{
    m_recorder.deed(u"every button let go"_s);
    m_platform.pointer().releaseAll();
}

Session::Outcome RecordedSession::lockScreen()
{
    const Outcome outcome = m_platform.session().lockScreen();
    m_recorder.deed(u"screen locked"_s + outcomeText(outcome));
    return outcome;
}

Session::Outcome RecordedSession::monitorOff()
{
    const Outcome outcome = m_platform.session().monitorOff();
    m_recorder.deed(u"monitor switched off"_s + outcomeText(outcome));
    return outcome;
}

Session::Outcome RecordedSession::logOff()
{
    m_recorder.deed(u"log off"_s);
    return m_platform.session().logOff();
}

Session::Outcome RecordedSession::shutDown()
{
    m_recorder.deed(u"shut down"_s);
    return m_platform.session().shutDown();
}

Session::Outcome RecordedSession::restart()
{
    m_recorder.deed(u"restart"_s);
    return m_platform.session().restart();
}

void RecordedWindows::tell(const char *what, WindowHandle window)
{
    m_recorder.deed(u"window %1 %2"_s.arg(window).arg(QLatin1StringView(what)));
}

void RecordedWindows::close(WindowHandle window)
{
    tell("asked to close", window);
    m_platform.windows().close(window);
}

void RecordedWindows::activate(WindowHandle window)
{
    tell("activated", window);
    m_platform.windows().activate(window);
}

void RecordedWindows::hide(WindowHandle window)
{
    tell("hidden", window);
    m_platform.windows().hide(window);
}

void RecordedWindows::show(WindowHandle window)
{
    tell("shown", window);
    m_platform.windows().show(window);
}

void RecordedWindows::minimise(WindowHandle window)
{
    tell("minimised", window);
    m_platform.windows().minimise(window);
}

void RecordedWindows::maximise(WindowHandle window)
{
    tell("maximised", window);
    m_platform.windows().maximise(window);
}

void RecordedWindows::moveTo(WindowHandle window, QPoint corner)
{
    m_recorder.deed(u"window %1 moved to %2:%3"_s.arg(window).arg(corner.x()).arg(corner.y()));
    m_platform.windows().moveTo(window, corner);
}

void RecordedWindows::bringHere(WindowHandle window)
{
    tell("fetched to this desktop", window);
    m_platform.windows().bringHere(window);
}

void RecordedWindows::setTopmost(WindowHandle window)
{
    tell("kept above all others", window);
    m_platform.windows().setTopmost(window);
}

bool RecordedShell::open(const QString &target, const QString &parameters, ShowState state)
{
    const bool isOpened = m_inner.open(target, parameters, state);
    m_recorder.deed(
        u"opened %1 %2"_s.arg(target, parameters).trimmed() + (isOpened ? u""_s : u" (failed)"_s));
    return isOpened;
}

bool RecordedShell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    const bool isStarted = m_inner.startHelper(program, commandLine, state);
    m_recorder.deed(u"started %1 %2"_s.arg(program, commandLine) + (isStarted ? u""_s : u" (failed)"_s));
    return isStarted;
}

} // namespace plum
