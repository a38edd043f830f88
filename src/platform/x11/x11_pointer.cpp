#include "platform/x11/x11_pointer.h"

#include "platform/x11/connection/x11_connection.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <limits>
#include <utility>
#include <xcb/xtest.h>

namespace plum {

namespace {

constexpr quint8 leftButton = 1;
constexpr quint8 rightButton = 3;

qint16 coordinate(int value)
{
    using Limits = std::numeric_limits<qint16>;
    return static_cast<qint16>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

} // namespace

QPoint X11Pointer::position()
{
    // A window manager may hold the pointer until it has looked at the click that begins a drag.
    if (const auto awaited = std::exchange(m_awaited, {})) {
        constexpr int longest = 200; // milliseconds
        const QDeadlineTimer deadline(longest);
        while (serverPosition() != *awaited && !deadline.hasExpired())
            QThread::msleep(1);
    }
    return serverPosition();
}

QPoint X11Pointer::serverPosition()
{
    const auto at = m_connection.reply(xcb_query_pointer_reply, xcb_query_pointer, m_connection.root());
    return at ? QPoint(at->root_x, at->root_y) : QPoint();
}

void X11Pointer::moveTo(QPoint point)
{
    if (!m_connection.isOpen())
        return;
    // Window managers and toolkits start a drag with one motion and carry it out with the next ones, so a
    // jump would be no drag.
    if (m_leftIsDown || m_rightIsDown) {
        constexpr int steps = 4;
        const QPoint from = position();
        for (int step = 1; step < steps; ++step)
            sendMotion(from + (point - from) * step / steps);
        m_drag = {from, point};
        m_awaited = point;
    }
    sendMotion(point);
    m_connection.sync();
}

void X11Pointer::sendMotion(QPoint point)
{
    constexpr quint8 absolute = 0;
    xcb_test_fake_input(m_connection.xcb(), XCB_MOTION_NOTIFY, absolute, XCB_CURRENT_TIME,
        m_connection.root(), coordinate(point.x()), coordinate(point.y()), 0);
}

// A program that was busy may have seen all motions of a drag as one, the one that started it. A step back
// and forth tells it again where the drag has gone.
void X11Pointer::finishDrag()
{
    const auto towards = [](int from, int to) { return to + (from > to) - (from < to); };
    const auto [from, to] = std::exchange(m_drag, {});
    if (from == to)
        return;
    sendMotion({towards(from.x(), to.x()), towards(from.y(), to.y())});
    sendMotion(to);
}

void X11Pointer::sendButton(quint8 button, bool down)
{
    if (!down)
        finishDrag();
    xcb_test_fake_input(m_connection.xcb(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button,
        XCB_CURRENT_TIME, m_connection.root(), 0, 0, 0);
    (button == leftButton ? m_leftIsDown : m_rightIsDown) = down;
}

void X11Pointer::buttonEvent(quint32 flags)
{
    if (!m_connection.isOpen())
        return;
    if (flags & LeftDown)
        sendButton(leftButton, true);
    if (flags & LeftUp)
        sendButton(leftButton, false);
    if (flags & RightDown)
        sendButton(rightButton, true);
    if (flags & RightUp)
        sendButton(rightButton, false);
    m_connection.sync();
}

void X11Pointer::releaseAll()
{
    if (m_leftIsDown)
        buttonEvent(LeftUp);
    if (m_rightIsDown)
        buttonEvent(RightUp);
}

} // namespace plum
