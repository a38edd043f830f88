#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace plum::test {

// Handles events until `condition` holds; false when it does not within a minute.
template <typename Condition> bool waitUntil(Condition condition)
{
    const QDeadlineTimer deadline(60'000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
    return true;
}

} // namespace plum::test
