#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace plum::test {

// How long a test waits for what has to come: only one that fails waits so long.
inline constexpr int patience = 60'000; // milliseconds

// Handles events until `condition` holds; false when it does not for that long.
template <typename Condition> bool waitUntil(Condition condition)
{
    const QDeadlineTimer deadline(patience);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
    return true;
}

} // namespace plum::test
