#pragma once

#include <chrono>
#include <optional>

namespace plum {

// One key: since when it is held. A server that sends another one's repeated keys on makes a release and a
// press of each repetition; these are no releases.
class HeldKey
{
public:
    using Clock = std::chrono::steady_clock;

    void press(Clock::time_point now);
    void release(Clock::time_point now);

    // It is down, and has been for `duration`.
    bool isHeldFor(Clock::duration duration, Clock::time_point now);

    // When that may be so at the earliest; nothing while the key is up.
    std::optional<Clock::time_point> lookAgainAt(Clock::duration duration, Clock::time_point now);

    void forget() { m_since.reset(); }

private:
    void settle(Clock::time_point now);

    std::optional<Clock::time_point> m_since;
    std::optional<Clock::time_point> m_releasedAt;
};

} // namespace plum
