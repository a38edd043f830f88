#include "platform/wayland/kwin/kwin_pointer.h"

#include "platform/wayland/kwin/kwin_windows.h"

namespace plum {

KWinPointer::KWinPointer(WaylandConnection &connection, KWinWindows &windows)
    : m_connection(connection)
    , m_windows(windows)
{
}

QPoint KWinPointer::position()
{
    if (isThere())
        setLast(m_windows.pointer().value_or(last()));
    return last();
}

void KWinPointer::sendMotion(QPoint point)
{
    org_kde_kwin_fake_input_pointer_motion_absolute(
        m_connection.fakeInput(), wl_fixed_from_int(point.x()), wl_fixed_from_int(point.y()));
}

void KWinPointer::sendButton(Button button, bool down)
{
    org_kde_kwin_fake_input_button(m_connection.fakeInput(), static_cast<uint32_t>(button),
        down ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
}

} // namespace plum
