#pragma once

#include "platform/waitable_timers.h"

#include <QEventLoop>
#include <QSocketNotifier>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

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
        explicit Timer(int opened);
        ~Timer();
        Q_DISABLE_COPY_MOVE(Timer)

        void arm(qint64 units); // 0 disarms
        bool isDue();

        QString name;
        int descriptor = -1;
        bool due = false;
        std::optional<qint64> unarmed; // set, but nobody waits yet: of several settings only the last counts
        std::unique_ptr<QSocketNotifier> notifier; // wakes the event loop
    };

    // A script waits before every line: a few closed timers are kept for the next waits.
    std::vector<std::unique_ptr<Timer>> m_spare;
    std::unordered_map<Handle, std::unique_ptr<Timer>> m_timers;
    Handle m_last = 0;
};

} // namespace plum
