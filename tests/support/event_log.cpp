#include "support/event_log.h"

namespace plum::test {

using namespace Qt::StringLiterals;

EventLog::EventLog(const QString &path, KeyNames keyNames)
    : m_file(path)
    , m_keyNames(keyNames)
{
    if (!m_file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qUtf8Printable(path));
}

void EventLog::write(const QString &line)
{
    m_file.write(line.toUtf8() + '\n');
    m_file.flush();
}

// Events of the native window, before Qt hands them to a widget.
bool EventLog::eventFilter(QObject *watched, QEvent *event)
{
    if (const auto *window = qobject_cast<QWindow *>(watched))
        describe(*window, *event);
    return false;
}

void EventLog::describe(const QWindow &window, const QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        describeKey(static_cast<const QKeyEvent &>(event));
        break;
    case QEvent::MouseButtonPress:
        describeMouse(u"button down"_s, static_cast<const QMouseEvent &>(event));
        break;
    case QEvent::MouseButtonRelease:
        describeMouse(u"button up"_s, static_cast<const QMouseEvent &>(event));
        break;
    case QEvent::MouseButtonDblClick:
        describeMouse(u"double click"_s, static_cast<const QMouseEvent &>(event));
        break;
    case QEvent::MouseMove:
        describeMouse(u"motion"_s, static_cast<const QMouseEvent &>(event));
        break;
    case QEvent::FocusIn:
        write(u"focus in"_s);
        break;
    case QEvent::FocusOut:
        write(u"focus out"_s);
        break;
    case QEvent::Move:
    case QEvent::Resize:
        write(u"geometry %1 %2 %3 %4"_s.arg(window.x())
                  .arg(window.y())
                  .arg(window.width())
                  .arg(window.height()));
        break;
    case QEvent::WindowStateChange:
        // A desktop that knows no maximised windows fills the screen in its own way.
        write(window.windowStates() & Qt::WindowMinimized                              ? u"minimised"_s
                : window.windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen) ? u"maximised"_s
                                                                                       : u"normal"_s);
        break;
    case QEvent::Close:
        write(u"close"_s);
        break;
    default:
        break;
    }
}

void EventLog::describeKey(const QKeyEvent &event)
{
    if (event.isAutoRepeat())
        return;
    const QString text = event.text();
    const quint32 key
        = m_keyNames == KeyNames::Native ? event.nativeVirtualKey() : static_cast<quint32>(event.key());
    write(u"key %1 %2 %3%4"_s.arg(event.type() == QEvent::KeyPress ? u"down"_s : u"up"_s)
              .arg(key, 0, 16)
              .arg(event.modifiers().toInt() >> 24)
              .arg(!text.isEmpty() && (text.front().isPrint() || text.front().isSurrogate()) ? u' ' + text
                                                                                             : QString()));
}

void EventLog::describeMouse(const QString &what, const QMouseEvent &event)
{
    const QPoint at = event.globalPosition().toPoint() + m_shift;
    const int button = event.button() == Qt::LeftButton ? 1 : event.button() == Qt::RightButton ? 3 : 0;
    write(button == 0 ? u"%1 %2 %3"_s.arg(what).arg(at.x()).arg(at.y())
                      : u"%1 %2 %3 %4"_s.arg(what).arg(button).arg(at.x()).arg(at.y()));
}

QRect rectangleFromText(const QString &text)
{
    const QStringList numbers = text.split(u',');
    return {numbers.value(0).toInt(), numbers.value(1).toInt(), numbers.value(2).toInt(),
        numbers.value(3).toInt()};
}

} // namespace plum::test
