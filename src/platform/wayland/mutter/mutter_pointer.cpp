#include "platform/wayland/mutter/mutter_pointer.h"

#include "platform/wayland/mutter/desktop_extension.h"
#include "platform/wayland/mutter/remote_session.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

namespace plum {

namespace {

// Numbers of the kernel's.
constexpr int leftButton = 0x110;
constexpr int rightButton = 0x111;

} // namespace

QPoint MutterPointer::position()
{
    m_last = m_extension.pointer().value_or(m_last);
    return m_last;
}

// The compositor moves it in a thread of its own; whoever asks next shall find it there. Between screens of
// different sizes are points where it does not get to.
void MutterPointer::moveTo(QPoint point)
{
    constexpr int patience = 500; // milliseconds
    const QRect area = m_session.area();
    if (area.isEmpty())
        return;
    point = {
        std::clamp(point.x(), area.left(), area.right()), std::clamp(point.y(), area.top(), area.bottom())};
    // Toolkits start a drag with one motion and carry it out with the next ones, so a jump would be no drag.
    if (m_leftIsDown || m_rightIsDown) {
        constexpr int steps = 4;
        const QPoint from = position();
        for (int step = 1; step < steps; ++step) {
            m_session.moveTo(from + (point - from) * step / steps);
            m_extension.settle();
        }
        m_drag = {from, point};
    }
    m_session.moveTo(point);
    m_last = point;
    for (const QDeadlineTimer deadline(patience); !deadline.hasExpired(); QThread::msleep(1)) {
        const auto now = m_extension.pointer();
        if (!now || *now == point)
            return;
    }
}

void MutterPointer::sendButton(int button, bool &isDown, bool down)
{
    // A program that was busy may have seen all motions of a drag as one, the one that started it. A step
    // back and forth tells it again where the drag has gone.
    const auto towards = [](int from, int to) { return to + (from > to) - (from < to); };
    const auto [from, to] = std::exchange(m_drag, {});
    if (!down && from != to) {
        m_session.moveTo({towards(from.x(), to.x()), towards(from.y(), to.y())});
        m_extension.settle();
        m_session.moveTo(to);
    }
    m_session.button(button, down);
    isDown = down;
}

void MutterPointer::buttonEvent(quint32 flags)
{
    if (flags & LeftDown)
        sendButton(leftButton, m_leftIsDown, true);
    if (flags & LeftUp)
        sendButton(leftButton, m_leftIsDown, false);
    if (flags & RightDown)
        sendButton(rightButton, m_rightIsDown, true);
    if (flags & RightUp)
        sendButton(rightButton, m_rightIsDown, false);
}

void MutterPointer::releaseAll()
{
    if (m_leftIsDown)
        buttonEvent(LeftUp);
    if (m_rightIsDown)
        buttonEvent(RightUp);
}

} // namespace plum
