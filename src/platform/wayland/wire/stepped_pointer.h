#pragma once

#include "platform/pointer.h"

#include <QRect>

#include <utility>

namespace plum {

// A pointer whose motions and buttons the wire sends one by one. Drags take several steps, since programs
// start one with a motion and carry it out with the next ones.
class SteppedPointer : public Pointer
{
public:
    void moveTo(QPoint point) final;
    void buttonEvent(quint32 flags) final;
    void releaseAll() final;

protected:
    // The kernel's numbers of the buttons.
    enum class Button : quint32 {
        Left = 0x110,
        Right = 0x111,
    };

    // Whether there is anything that takes motions and buttons.
    virtual bool isThere() const = 0;
    // All outputs together.
    virtual QRect layout() const = 0;
    virtual void sendMotion(QPoint point) = 0;
    virtual void sendButton(Button button, bool down) = 0;
    // Waits until the compositor has worked off what was sent.
    virtual void finish() = 0;
    // Called before a press while no button is down.
    virtual void beforePress() { }

    bool isAnyDown() const { return m_leftIsDown || m_rightIsDown; }
    // Where it was moved to, or found.
    QPoint last() const { return m_last; }
    void setLast(QPoint point) { m_last = point; }

private:
    void changeButton(Button button, bool &isDown, bool down);

    QPoint m_last;
    std::pair<QPoint, QPoint> m_drag; // from and to of the last move with a button down; equal without one
    bool m_leftIsDown = false;
    bool m_rightIsDown = false;
};

} // namespace plum
