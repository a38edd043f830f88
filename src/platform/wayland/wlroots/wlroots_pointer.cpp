#include "platform/wayland/wlroots/wlroots_pointer.h"

#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/wire/event_time.h"
#include "platform/wayland/wlroots/pointer_probe.h"

#include <algorithm>

namespace plum {

namespace {

// Numbers of the kernel's.
constexpr uint32_t leftButton = 0x110;
constexpr uint32_t rightButton = 0x111;

} // namespace

WlrootsPointer::WlrootsPointer(WaylandConnection &connection)
    : m_connection(connection)
{
    if (!m_connection.isOpen() || !m_connection.virtualPointers())
        return;
    m_device.reset(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(
        m_connection.virtualPointers(), m_connection.seat()));
    // A seat without a mouse has a pointer from here on.
    m_connection.roundTrip();
}

// While a button is down the pointer belongs to the window where it was pressed and enters no other.
QPoint WlrootsPointer::position()
{
    if (!m_device)
        return {};
    if (!isAnyDown()) {
        m_last = probePointer(m_connection).value_or(m_last);
        m_wasCovered = true;
    }
    return m_last;
}

// A press would still go to the surface that lay over the window for a moment, until the pointer has entered
// the window again with a motion. Between the two the hand may have moved it.
void WlrootsPointer::enterWindowAgain()
{
    if (!m_wasCovered)
        return;
    position();
    sendMotion(m_last);
}

void WlrootsPointer::moveTo(QPoint point)
{
    const QRect layout = m_connection.layout();
    if (!m_device || layout.isEmpty())
        return;
    point = {std::clamp(point.x(), layout.left(), layout.right()),
        std::clamp(point.y(), layout.top(), layout.bottom())};
    // Toolkits start a drag with one motion and carry it out with the next ones, so a jump would be no drag.
    if (isAnyDown()) {
        constexpr int steps = 4;
        for (int step = 1; step < steps; ++step)
            sendMotion(m_last + (point - m_last) * step / steps);
        m_drag = {m_last, point};
    }
    sendMotion(point);
    m_last = point;
    m_connection.roundTrip();
}

void WlrootsPointer::sendMotion(QPoint point)
{
    m_wasCovered = false;
    const QRect layout = m_connection.layout();
    zwlr_virtual_pointer_v1_motion_absolute(m_device.get(), eventTime(),
        static_cast<uint32_t>(point.x() - layout.x()), static_cast<uint32_t>(point.y() - layout.y()),
        static_cast<uint32_t>(layout.width()), static_cast<uint32_t>(layout.height()));
    zwlr_virtual_pointer_v1_frame(m_device.get());
}

void WlrootsPointer::sendButton(uint32_t button, bool &isDown, bool down)
{
    // A program that was busy may have seen all motions of a drag as one, the one that started it. A step
    // back and forth tells it again where the drag has gone.
    const auto towards = [](int from, int to) { return to + (from > to) - (from < to); };
    const auto [from, to] = std::exchange(m_drag, {});
    if (!down && from != to) {
        sendMotion({towards(from.x(), to.x()), towards(from.y(), to.y())});
        sendMotion(to);
    }
    zwlr_virtual_pointer_v1_button(m_device.get(), eventTime(), button,
        down ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
    zwlr_virtual_pointer_v1_frame(m_device.get());
    isDown = down;
}

void WlrootsPointer::buttonEvent(quint32 flags)
{
    if (!m_device)
        return;
    if ((flags & (LeftDown | RightDown)) && !isAnyDown())
        enterWindowAgain();
    if (flags & LeftDown)
        sendButton(leftButton, m_leftIsDown, true);
    if (flags & LeftUp)
        sendButton(leftButton, m_leftIsDown, false);
    if (flags & RightDown)
        sendButton(rightButton, m_rightIsDown, true);
    if (flags & RightUp)
        sendButton(rightButton, m_rightIsDown, false);
    m_connection.roundTrip();
}

void WlrootsPointer::releaseAll()
{
    if (m_leftIsDown)
        buttonEvent(LeftUp);
    if (m_rightIsDown)
        buttonEvent(RightUp);
}

} // namespace plum
