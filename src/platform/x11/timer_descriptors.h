#pragma once

#include "platform/waitable_timers.h"

#include <QEventLoop>
#include <QSocketNotifier>

#include <memory>
#include <unordered_map>

namespace plum {

// Waitable timers on timer file descriptors, which the event loop watches beside everything else: a wait
// costs no processor time and ends within the kernel's own accuracy. Names are known to this process alone.
class TimerDescriptors final : public WaitableTimers
{
public:
    Created create(const QString &name) override;
    void set(Handle timer, qint64 dueTime) override;
    bool waitOrPump(Handle timer) override;
    void close(Handle timer) override;

private:
    struct Timer
    {
        Timer(const QString &name);
        ~Timer();
        Q_DISABLE_COPY_MOVE(Timer)

        bool isDue();

        QString name;
        int descriptor = -1;
        bool due = false;
        std::unique_ptr<QSocketNotifier> notifier; // wakes the event loop
    };

    std::unordered_map<Handle, std::unique_ptr<Timer>> m_timers;
    Handle m_last = 0;
};

} // namespace plum
