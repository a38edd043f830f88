#pragma once

#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/wire/stepped_pointer.h"

namespace plum {

class KWinWindows;

// The session's own pointer: KWin takes motions and buttons for it, and its scripts tell where it is.
class KWinPointer final : public SteppedPointer
{
public:
    KWinPointer(WaylandConnection &connection, KWinWindows &windows);

    QPoint position() override;

protected:
    bool isThere() const override { return m_connection.isOpen() && m_connection.fakeInput(); }
    QRect layout() const override { return m_connection.layout(); }
    void sendMotion(QPoint point) override;
    void sendButton(Button button, bool down) override;
    void finish() override { m_connection.roundTrip(); }
    void beforePress() override { position(); }

private:
    WaylandConnection &m_connection;
    KWinWindows &m_windows;
};

} // namespace plum
