#pragma once

#include "platform/hand_watch.h"

#include <qt_windows.h>
#include <thread>

namespace plum {

// The user's keys through a low-level hook, which is told of each key whether a program made it. The system
// calls it in a thread of its own, which has nothing else to do, and takes it away with the thread.
class Win32HandWatch final : public HandWatch
{
public:
    explicit Win32HandWatch(const HandSigns &signs);
    ~Win32HandWatch() override;
    Win32HandWatch(const Win32HandWatch &) = delete;
    Win32HandWatch &operator=(const Win32HandWatch &) = delete;

private:
    void watch(const HandSigns &signs) const;

    HANDLE m_end; // an event, set when the thread is to end
    std::thread m_thread;
};

} // namespace plum
