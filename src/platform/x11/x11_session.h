#pragma once

#include "platform/linux/linux_session.h"

namespace plum {

class X11Connection;

// A Linux session whose monitor the X server switches off.
class X11Session final : public LinuxSession
{
public:
    explicit X11Session(X11Connection &connection)
        : m_connection(connection)
    {
    }

    Outcome monitorOff() override;

private:
    X11Connection &m_connection;
};

} // namespace plum
