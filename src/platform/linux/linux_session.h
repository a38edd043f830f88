#pragma once

#include "platform/session.h"

namespace plum {

// The session and the machine through the services of a Linux desktop: the screen saver on the session bus
// and the login manager on the system bus. A bus that is not there counts as a missing service; no bus is
// ever started for it. The monitor belongs to whatever draws the desktop.
class LinuxSession : public Session
{
public:
    Outcome lockScreen() final;
    Outcome logOff() final;
    Outcome shutDown() final;
    Outcome restart() final;
};

} // namespace plum
