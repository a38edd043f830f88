#pragma once

#include "engine/waiter.h"
#include "platform/waitable_timers.h"

#include <functional>

class QDateTime;

namespace plum {

// The wait behind every pause of a script: a timer of the system and a message pump, so that the launcher
// stays responsive. Waits may nest: an event handled inside a wait may wait itself.
class clsWaitableTimer final : public Waiter
{
public:
    using Clock = std::function<QDateTime()>;

    // `executableName` without its extension is the beginning of every timer's name.
    clsWaitableTimer(WaitableTimers &timers, QString executableName, Clock now);
    ~clsWaitableTimer() override;
    Q_DISABLE_COPY_MOVE(clsWaitableTimer)

    void Wait(double milliseconds) override;
    void Wait(const QString &milliseconds) override;
    void Wait(double milliseconds, const std::function<bool()> &isOver) override;

private:
    void waitFor(double milliseconds, const std::function<bool()> &isOver = {});
    QString timerName() const;

    WaitableTimers &m_timers;
    QString m_executableName;
    Clock m_now;
    WaitableTimers::Handle m_current = 0; // the innermost wait's timer
};

// The due time of a wait, a negative count of 100 ns units, from two 32-bit halves. The arithmetic has
// consequences that scripts know: 0 ms lasts 429.4967296 s, and a wait whose count of 2^32 units rounds up
// lasts that much longer than asked. Halves outside 32 bits raise an overflow (6).
qint64 relativeDueTime(double milliseconds);

} // namespace plum
