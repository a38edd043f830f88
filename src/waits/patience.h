#pragma once

#include "platform/news.h"

#include <QtGlobal>

#include <functional>
#include <memory>

namespace plum {

class Waiter;

// Waits for something by looking for it: when there are news of it, or, where nobody tells, again and again.
class Patience
{
public:
    // Milliseconds since any moment; never goes back.
    using Clock = std::function<qint64()>;
    // Begins to listen; null where nobody tells.
    using Listen = std::function<std::unique_ptr<News>()>;

    Patience(Waiter &waiter, Clock now)
        : m_waiter(waiter)
        , m_now(std::move(now))
    {
    }

    // Calls `look` at once, and a last time when `milliseconds` are over. In between whenever there are news,
    // and once a second, since not everything tells of itself always; where nobody tells, at most 20 times a
    // second. True as soon as it returns true. The user interface lives meanwhile.
    bool waitUntil(qint64 milliseconds, const std::function<bool()> &look, const Listen &listen = {}) const;

private:
    void waitForNews(News &news, qint64 begin, qint64 deadline) const;
    void pause(qint64 milliseconds, qint64 deadline) const;

    Waiter &m_waiter;
    Clock m_now;
};

} // namespace plum
