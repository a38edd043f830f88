#include "look/moveit.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace plum {

moveit::moveit(QWidget &window)
    : QObject(&window)
    , m_window(window)
{
}

void moveit::installOn(QWidget &handle)
{
    handle.installEventFilter(this);
}

bool moveit::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::LeftButton)
            m_grip = mouse->globalPosition().toPoint() - m_window.pos();
    } else if (event->type() == QEvent::MouseMove) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->buttons() & Qt::LeftButton)
            drag(mouse->globalPosition().toPoint());
    } else if (event->type() == QEvent::MouseButtonRelease) {
        m_grip.reset();
    }
    return QObject::eventFilter(watched, event);
}

void moveit::drag(QPoint pointer)
{
    if (!m_grip || m_window.isMaximized())
        return;
    // The window manager's own move snaps and crosses screens; where there is none the window follows itself.
    QWindow *handle = m_window.windowHandle();
    if (handle && handle->startSystemMove())
        m_grip.reset();
    else
        m_window.move(pointer - *m_grip);
}

} // namespace plum
