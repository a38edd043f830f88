#include "platform/x11/timer_descriptors.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <sys/timerfd.h>
#include <unistd.h>

namespace plum {

namespace {

constexpr qint64 unitsPerSecond = 10'000'000;
constexpr qint64 nanosecondsPerUnit = 100;

} // namespace

TimerDescriptors::Timer::Timer(const QString &timerName)
    : name(timerName)
    , descriptor(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK))
    , notifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read))
{
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { isDue(); });
}

TimerDescriptors::Timer::~Timer()
{
    notifier.reset();
    ::close(descriptor);
}

bool TimerDescriptors::Timer::isDue()
{
    if (!due) {
        quint64 expirations = 0;
        due = read(descriptor, &expirations, sizeof expirations) == sizeof expirations;
    }
    return due;
}

WaitableTimers::Created TimerDescriptors::create(const QString &name)
{
    const bool existed
        = std::ranges::any_of(m_timers, [&](const auto &timer) { return timer.second->name == name; });
    m_timers.emplace(++m_last, std::make_unique<Timer>(name));
    return {m_last, existed};
}

void TimerDescriptors::set(Handle timer, qint64 dueTime)
{
    const auto found = m_timers.find(timer);
    if (found == m_timers.end())
        return;
    const qint64 units = std::max<qint64>(-dueTime, 0);
    itimerspec when{};
    when.it_value.tv_sec = units / unitsPerSecond;
    // A value of all zeros would disarm the timer instead of making it due at once.
    when.it_value.tv_nsec = std::max<qint64>(units % unitsPerSecond * nanosecondsPerUnit, units == 0 ? 1 : 0);
    found->second->due = false;
    timerfd_settime(found->second->descriptor, 0, &when, nullptr);
}

bool TimerDescriptors::waitOrPump(Handle timer)
{
    const auto found = m_timers.find(timer);
    if (found == m_timers.end())
        return true;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // What the user interface did may have closed timers, but never the one of a wait that is still running.
    return m_timers.at(timer)->isDue();
}

void TimerDescriptors::close(Handle timer)
{
    m_timers.erase(timer);
}

} // namespace plum
