#include "platform/x11/hand/held_key.h"

#include <algorithm>

namespace plum {

namespace {

// A finger does not come back so soon.
constexpr std::chrono::milliseconds repetitionGap{25};

} // namespace

void HeldKey::press(Clock::time_point now)
{
    settle(now);
    m_releasedAt.reset();
    if (!m_since)
        m_since = now;
}

void HeldKey::release(Clock::time_point now)
{
    if (!m_releasedAt)
        m_releasedAt = now;
}

void HeldKey::settle(Clock::time_point now)
{
    if (m_releasedAt && now - *m_releasedAt > repetitionGap)
        m_since.reset();
}

bool HeldKey::isHeldFor(Clock::duration duration, Clock::time_point now)
{
    settle(now);
    return m_since && !m_releasedAt && now - *m_since >= duration;
}

std::optional<HeldKey::Clock::time_point> HeldKey::lookAgainAt(
    Clock::duration duration, Clock::time_point now)
{
    settle(now);
    if (!m_since)
        return {};
    const Clock::time_point due = *m_since + duration;
    return m_releasedAt ? std::max(due, *m_releasedAt + repetitionGap) : due;
}

} // namespace plum
