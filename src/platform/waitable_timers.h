#pragma once

#include <QString>

namespace plum {

// Timers that a thread can wait for while its user interface goes on, at the granularity of the Windows
// calls `CreateWaitableTimer`, `SetWaitableTimer`, `MsgWaitForMultipleObjects` and `CloseHandle`.
class WaitableTimers
{
public:
    using Handle = int; // 0 is no timer

    struct Created
    {
        Handle handle = 0;
        bool nameExisted = false; // a live timer has this name already (error 183 on Windows)
    };

    virtual ~WaitableTimers() = default;

    // No handle when the system has no room for another timer.
    virtual Created create(const QString &name) = 0;

    // Starts the timer. `dueTime` is in units of 100 ns; a negative one counts from now. There is no period.
    virtual void set(Handle timer, qint64 dueTime) = 0;

    // Sleeps until the timer is due or the user interface has something to do, does what the interface
    // has to do, and returns true when the timer is due.
    virtual bool waitOrPump(Handle timer) = 0;

    // 0 is ignored.
    virtual void close(Handle timer) = 0;
};

} // namespace plum
