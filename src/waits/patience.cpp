#include "waits/patience.h"

#include "engine/waiter.h"

#include <algorithm>

namespace plum {

namespace {

constexpr qint64 lookInterval = 50; // 20 looks a second
constexpr qint64 leastPause = 10; // also after a look that took long, so that others get a turn

} // namespace

bool Patience::waitUntil(qint64 milliseconds, const std::function<bool()> &look) const
{
    const qint64 deadline = m_now() + milliseconds;
    for (;;) {
        const qint64 begin = m_now();
        if (look())
            return true;
        const qint64 end = m_now();
        if (end >= deadline)
            return false;
        const qint64 pause = std::max(lookInterval - (end - begin), leastPause);
        m_waiter.Wait(static_cast<double>(std::min(pause, deadline - end)));
    }
}

} // namespace plum
