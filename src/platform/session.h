#pragma once

#include <QString>

namespace plum {

// The user's session and the machine. Every call returns at once or within two seconds; a service that
// does not answer counts as missing.
class Session
{
public:
    enum class Outcome {
        Done,
        Unavailable, // there is no such service on this machine, or it refused
    };

    virtual ~Session() = default;

    virtual Outcome lockScreen() = 0;
    virtual Outcome monitorOff() = 0;

    // These three end programs without asking them. `Unavailable` means that nothing was started.
    virtual Outcome logOff() = 0;
    virtual Outcome shutDown() = 0;
    virtual Outcome restart() = 0;
};

} // namespace plum
