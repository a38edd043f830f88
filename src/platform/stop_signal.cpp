#include "platform/stop_signal.h"

#include <chrono>

namespace plum {

namespace {

constexpr qint64 recently = 2000; // milliseconds

qint64 steadyMilliseconds()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

void OwnKeys::note(quint8 virtualKey)
{
    m_at[virtualKey] = steadyMilliseconds();
}

bool OwnKeys::isRecent(quint8 virtualKey) const
{
    const qint64 at = m_at[virtualKey];
    return at != 0 && steadyMilliseconds() - at < recently;
}

void StopSignal::raise()
{
    {
        // Whoever has seen the flag waits here for its time.
        const std::scoped_lock lock(m_lock);
        if (!m_isRaised.exchange(true))
            m_raisedAt = std::chrono::steady_clock::now();
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isRaised())
                Q_EMIT raised();
        },
        Qt::QueuedConnection);
}

std::optional<std::chrono::steady_clock::time_point> StopSignal::raisedAt() const
{
    const std::scoped_lock lock(m_lock);
    return m_raisedAt;
}

} // namespace plum
