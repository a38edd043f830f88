#include "platform/wayland/wire/stepped_pointer.h"

#include <algorithm>

namespace plum {

void SteppedPointer::moveTo(QPoint point)
{
    const QRect all = layout();
    if (!isThere() || all.isEmpty())
        return;
    point = {std::clamp(point.x(), all.left(), all.right()), std::clamp(point.y(), all.top(), all.bottom())};
    // Toolkits start a drag with one motion and carry it out with the next ones, so a jump would be no drag.
    if (isAnyDown()) {
        constexpr int steps = 4;
        for (int step = 1; step < steps; ++step)
            sendMotion(m_last + (point - m_last) * step / steps);
        m_drag = {m_last, point};
    }
    sendMotion(point);
    m_last = point;
    finish();
}

void SteppedPointer::changeButton(Button button, bool &isDown, bool down)
{
    // A program that was busy may have seen all motions of a drag as one, the one that started it. A step
    // back and forth tells it again where the drag has gone.
    const auto towards = [](int from, int to) { return to + (from > to) - (from < to); };
    const auto [from, to] = std::exchange(m_drag, {});
    if (!down && from != to) {
        sendMotion({towards(from.x(), to.x()), towards(from.y(), to.y())});
        sendMotion(to);
    }
    sendButton(button, down);
    isDown = down;
}

void SteppedPointer::buttonEvent(quint32 flags)
{
    if (!isThere())
        return;
    if ((flags & (LeftDown | RightDown)) && !isAnyDown())
        beforePress();
    if (flags & LeftDown)
        changeButton(Button::Left, m_leftIsDown, true);
    if (flags & LeftUp)
        changeButton(Button::Left, m_leftIsDown, false);
    if (flags & RightDown)
        changeButton(Button::Right, m_rightIsDown, true);
    if (flags & RightUp)
        changeButton(Button::Right, m_rightIsDown, false);
    finish();
}

void SteppedPointer::releaseAll()
{
    if (m_leftIsDown)
        buttonEvent(LeftUp);
    if (m_rightIsDown)
        buttonEvent(RightUp);
}

} // namespace plum
