#pragma once

#include "platform/pointer.h"
#include "platform/wayland/connection/wayland_objects.h"

#include <utility>

namespace plum {

class WaylandConnection;

// A pointer device of our own, whose events programs cannot tell from those of a mouse.
class WlrootsPointer final : public Pointer
{
public:
    explicit WlrootsPointer(WaylandConnection &connection);

    QPoint position() override;
    bool isAskedUnseen() const override { return false; }
    void moveTo(QPoint point) override;
    void buttonEvent(quint32 flags) override;
    void releaseAll() override;

private:
    void enterWindowAgain();
    void sendMotion(QPoint point);
    void sendButton(uint32_t button, bool &isDown, bool down);
    bool isAnyDown() const { return m_leftIsDown || m_rightIsDown; }

    WaylandConnection &m_connection;
    WaylandOwned<zwlr_virtual_pointer_v1> m_device;
    QPoint m_last; // where it was moved to, or found
    std::pair<QPoint, QPoint> m_drag; // from and to of the last move with a button down; equal without one
    bool m_wasCovered = true; // since the last motion of ours, or not moved yet
    bool m_leftIsDown = false;
    bool m_rightIsDown = false;
};

} // namespace plum
