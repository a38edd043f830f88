#pragma once

#include "platform/waitable_timers.h"

namespace plum {

// The kernel's own waitable timers. A timer of a name that exists already, in this process or in another one
// of the session, is that timer.
class Win32Timers final : public WaitableTimers
{
public:
    Created create(const QString &name) override;
    void set(Handle timer, qint64 dueTime) override;
    bool waitOrPump(Handle timer) override;
    void close(Handle timer) override;
};

} // namespace plum
