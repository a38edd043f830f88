#pragma once

#include "platform/session.h"
#include "platform/x11/connection/x11_connection.h"

namespace plum {

// The session and the machine through the services of a Linux desktop: the screen saver on the session bus,
// the login manager on the system bus, and the X server for the monitor. A bus that is not there counts as a
// missing service; no bus is ever started for it.
class X11Session final : public Session
{
public:
    explicit X11Session(X11Connection &connection)
        : m_connection(connection)
    {
    }

    Outcome lockScreen() override;
    Outcome monitorOff() override;
    Outcome logOff() override;
    Outcome shutDown() override;
    Outcome restart() override;

private:
    X11Connection &m_connection;
};

} // namespace plum
