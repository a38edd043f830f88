#pragma once

#include "platform/pointer.h"

#include <optional>

namespace plum {

class X11Connection;

// The pointer through the XTEST extension, whose events programs cannot tell from those of a mouse. Like
// those of the keyboard they have been carried out when a call comes back.
class X11Pointer final : public Pointer
{
public:
    explicit X11Pointer(X11Connection &connection)
        : m_connection(connection)
    {
    }

    QPoint position() override;
    void moveTo(QPoint point) override;
    void buttonEvent(quint32 flags) override;
    void releaseAll() override;

private:
    QPoint serverPosition();
    void sendMotion(QPoint point);
    void finishDrag();
    void sendButton(quint8 button, bool down);

    struct Drag
    {
        QPoint from;
        QPoint to;
    };

    X11Connection &m_connection;
    Drag m_drag; // the last move with a button down; two equal points when there was none
    std::optional<QPoint> m_awaited; // where a move with a button down goes that may not have happened yet
    bool m_leftIsDown = false;
    bool m_rightIsDown = false;
};

} // namespace plum
