#include "platform/win32/win32_pointer.h"

#include <qt_windows.h>

namespace plum {

namespace {

constexpr quint32 downEvents = Pointer::LeftDown | Pointer::RightDown;
constexpr quint32 upEvents = Pointer::LeftUp | Pointer::RightUp;

} // namespace

QPoint Win32Pointer::position()
{
    POINT point{};
    GetCursorPos(&point);
    return {point.x, point.y};
}

void Win32Pointer::moveTo(QPoint point)
{
    SetCursorPos(point.x(), point.y());
}

void Win32Pointer::buttonEvent(quint32 flags)
{
    const quint32 known = flags & (downEvents | upEvents);
    if (known == 0)
        return;
    mouse_event(known, 0, 0, 0, 0);
    // The up event of a button has twice the value of its down event, and comes after it.
    m_toRelease = (m_toRelease | (known & downEvents) << 1) & ~(known & upEvents);
}

void Win32Pointer::releaseAll()
{
    buttonEvent(m_toRelease);
}

} // namespace plum
