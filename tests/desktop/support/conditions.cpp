#include "desktop/support/conditions.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace plum {

bool eventually(const std::function<bool()> &condition)
{
    constexpr int longest = 20'000; // milliseconds
    constexpr int betweenLooks = 5;
    const QDeadlineTimer deadline(longest);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents();
        QThread::msleep(betweenLooks);
    }
    return true;
}

} // namespace plum
