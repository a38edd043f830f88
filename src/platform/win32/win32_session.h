#pragma once

#include "platform/session.h"

namespace plum {

class HiddenWindow;

class Win32Session final : public Session
{
public:
    explicit Win32Session(HiddenWindow &window)
        : m_window(window)
    {
    }

    Outcome lockScreen() override;
    Outcome monitorOff() override;
    Outcome logOff() override;
    Outcome shutDown() override;
    Outcome restart() override;

private:
    HiddenWindow &m_window;
};

} // namespace plum
