#include "platform/wayland/wlroots/wlroots_pointer.h"

#include "platform/wayland/wire/event_time.h"
#include "platform/wayland/wlroots/pointer_probe.h"

namespace plum {

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
        setLast(probePointer(m_connection).value_or(last()));
        m_wasCovered = true;
    }
    return last();
}

// A press would still go to the surface that lay over the window for a moment, until the pointer has entered
// the window again with a motion. Between the two the hand may have moved it.
void WlrootsPointer::beforePress()
{
    if (!m_wasCovered)
        return;
    position();
    sendMotion(last());
}

void WlrootsPointer::sendMotion(QPoint point)
{
    m_wasCovered = false;
    const QRect all = layout();
    zwlr_virtual_pointer_v1_motion_absolute(m_device.get(), eventTime(),
        static_cast<uint32_t>(point.x() - all.x()), static_cast<uint32_t>(point.y() - all.y()),
        static_cast<uint32_t>(all.width()), static_cast<uint32_t>(all.height()));
    zwlr_virtual_pointer_v1_frame(m_device.get());
}

void WlrootsPointer::sendButton(Button button, bool down)
{
    zwlr_virtual_pointer_v1_button(m_device.get(), eventTime(), static_cast<uint32_t>(button),
        down ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
    zwlr_virtual_pointer_v1_frame(m_device.get());
}

} // namespace plum
