#pragma once

#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/wire/stepped_pointer.h"

namespace plum {

// A pointer device of our own, whose events programs cannot tell from those of a mouse.
class WlrootsPointer final : public SteppedPointer
{
public:
    explicit WlrootsPointer(WaylandConnection &connection);

    QPoint position() override;
    bool isAskedUnseen() const override { return false; }

protected:
    bool isThere() const override { return m_device != nullptr; }
    QRect layout() const override { return m_connection.layout(); }
    void sendMotion(QPoint point) override;
    void sendButton(Button button, bool down) override;
    void finish() override { m_connection.roundTrip(); }
    void beforePress() override;

private:
    WaylandConnection &m_connection;
    WaylandOwned<zwlr_virtual_pointer_v1> m_device;
    bool m_wasCovered = true; // since the last motion of ours, or not moved yet
};

} // namespace plum
