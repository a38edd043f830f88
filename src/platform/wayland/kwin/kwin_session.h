#pragma once

#include "platform/linux/linux_session.h"

namespace plum {

class KWinBus;

// A Linux session whose monitor Plasma's power management switches off.
class KWinSession final : public LinuxSession
{
public:
    explicit KWinSession(KWinBus &bus)
        : m_bus(bus)
    {
    }

    Outcome monitorOff() override;

private:
    KWinBus &m_bus;
};

} // namespace plum
