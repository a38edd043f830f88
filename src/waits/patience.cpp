#include "waits/patience.h"

#include "engine/waiter.h"

#include <algorithm>
#include <utility>

namespace plum {

namespace {

constexpr qint64 lookInterval = 50; // 20 looks a second
constexpr qint64 leastPause = 10; // also after a look that took long, so that others get a turn
constexpr qint64 longestTrust = 1000; // without a look where there were no news

} // namespace

bool Patience::waitUntil(qint64 milliseconds, const std::function<bool()> &look, const Listen &listen) const
{
    const qint64 deadline = m_now() + milliseconds;
    std::unique_ptr<News> news;
    bool hasListened = false;
    for (;;) {
        const qint64 begin = m_now();
        if (look())
            return true;
        const qint64 end = m_now();
        if (end >= deadline)
            return false;
        // Most of what is waited for is there already, and then nobody need listen.
        if (listen && !std::exchange(hasListened, true)) {
            news = listen();
            if (news && news->arrived())
                continue;
        }
        if (news)
            waitForNews(*news, end, deadline);
        else
            pause(std::max(lookInterval - (end - begin), leastPause), deadline);
    }
}

void Patience::waitForNews(News &news, qint64 begin, qint64 deadline) const
{
    const qint64 left = deadline - m_now();
    if (left <= 0)
        return;
    m_waiter.Wait(static_cast<double>(std::min(longestTrust, left)), [&news] { return news.arrived(); });
    if (const qint64 waited = m_now() - begin; waited < leastPause)
        pause(leastPause - waited, deadline);
}

// Waiting for no time at all would take minutes.
void Patience::pause(qint64 milliseconds, qint64 deadline) const
{
    if (const qint64 left = deadline - m_now(); left > 0)
        m_waiter.Wait(static_cast<double>(std::min(milliseconds, left)));
}

} // namespace plum
