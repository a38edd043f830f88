#include "ui/controls/caret_rest.h"

#include <QApplication>
#include <QEvent>

namespace plum {

CaretRest::CaretRest(std::chrono::milliseconds patience)
    : m_flashTime(QApplication::cursorFlashTime())
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &CaretRest::rest);
    m_patience.start();
    qApp->installEventFilter(this);
}

CaretRest::~CaretRest()
{
    QApplication::setCursorFlashTime(m_flashTime);
}

bool CaretRest::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::WindowActivate:
        blink();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void CaretRest::blink()
{
    if (QApplication::cursorFlashTime() != m_flashTime)
        QApplication::setCursorFlashTime(m_flashTime);
    m_patience.start();
}

void CaretRest::rest()
{
    QApplication::setCursorFlashTime(0);
}

} // namespace plum
