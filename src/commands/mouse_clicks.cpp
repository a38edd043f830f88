#include "commands/mouse_clicks.h"

#include "engine/waiter.h"
#include "platform/pointer.h"

namespace plum {

namespace {

constexpr double clickPause = 200;
constexpr double doubleClickPause = 100;

} // namespace

void MouseClicks::leftClick(qint16 times)
{
    for (m_repetition = 1; m_repetition <= times; ++m_repetition) {
        m_pointer.buttonEvent(Pointer::LeftDown);
        m_waiter.Wait(clickPause);
        m_pointer.buttonEvent(Pointer::LeftUp);
        m_waiter.Wait(clickPause);
    }
}

void MouseClicks::doubleClick(qint16 times)
{
    for (m_repetition = 1; m_repetition <= times; ++m_repetition) {
        m_pointer.buttonEvent(Pointer::LeftDown | Pointer::LeftUp);
        m_pointer.buttonEvent(Pointer::LeftDown | Pointer::LeftUp);
        m_waiter.Wait(doubleClickPause);
    }
}

void MouseClicks::rightClick()
{
    m_pointer.buttonEvent(Pointer::RightDown);
    m_pointer.buttonEvent(Pointer::RightUp);
}

} // namespace plum
