#pragma once

#include "platform/linux/linux_session.h"
#include "platform/wayland/sway/sway_socket.h"

namespace plum {

// A Linux session whose monitor sway switches off; no other compositor is known to.
class WlrootsSession final : public LinuxSession
{
public:
    Outcome monitorOff() override
    {
        return m_socket.run("output * dpms off") ? Outcome::Done : Outcome::Unavailable;
    }

private:
    SwaySocket m_socket;
};

} // namespace plum
