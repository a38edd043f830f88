#pragma once

#include <QtGlobal>

namespace plum {

class Pointer;
class Waiter;

// The clicks that the mouse commands and the screen searches share.
class MouseClicks
{
public:
    MouseClicks(Pointer &pointer, Waiter &waiter)
        : m_pointer(pointer)
        , m_waiter(waiter)
    {
    }

    // `times` clicks of the left button, 200 ms after each press and after each release.
    void leftClick(qint16 times = 1);

    // `times` double clicks: two presses and releases back to back, then 100 ms.
    void doubleClick(qint16 times = 1);

    void rightClick();

private:
    Pointer &m_pointer;
    Waiter &m_waiter;
    qint16 m_repetition = 0; // shared by both clicks, as a run started inside their waits may see
};

} // namespace plum
