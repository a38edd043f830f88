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
    m_isRaised = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isRaised())
                Q_EMIT raised();
        },
        Qt::QueuedConnection);
}

} // namespace plum
