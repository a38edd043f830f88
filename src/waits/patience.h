#pragma once

#include <QtGlobal>

#include <functional>

namespace plum {

class Waiter;

// Waits for something that nobody announces, by looking for it.
class Patience
{
public:
    // Milliseconds since any moment; never goes back.
    using Clock = std::function<qint64()>;

    Patience(Waiter &waiter, Clock now)
        : m_waiter(waiter)
        , m_now(std::move(now))
    {
    }

    // Calls `look` at once, then at most 20 times a second, and a last time when `milliseconds` are over.
    // True as soon as it returns true. The user interface lives meanwhile.
    bool waitUntil(qint64 milliseconds, const std::function<bool()> &look) const;

    qint64 now() const { return m_now(); }

private:
    Waiter &m_waiter;
    Clock m_now;
};

} // namespace plum
