#pragma once

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

class QString;

namespace plum {

// When programs pressed, released and moved something on a server, as its raw events tell.
class ScriptEvents
{
public:
    using Clock = std::chrono::steady_clock;

    struct Event
    {
        Clock::time_point at;
        bool isRelease = false;
    };

    explicit ScriptEvents(const QString &display);
    ~ScriptEvents();
    Q_DISABLE_COPY_MOVE(ScriptEvents)

    void clear();
    std::vector<Event> all() const;

private:
    void watch(const QString &display);

    std::atomic<bool> m_isOver = false;
    mutable std::mutex m_lock;
    std::vector<Event> m_events;
    std::thread m_thread;
};

} // namespace plum
