#include "platform/linux/timer_descriptors.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <sys/timerfd.h>
#include <unistd.h>

namespace plum {

namespace {

constexpr qint64 unitsPerSecond = 10'000'000;
constexpr qint64 nanosecondsPerUnit = 100;
constexpr size_t mostSpare = 4;

} // namespace

TimerDescriptors::Timer::Timer(int opened)
    : descriptor(opened)
    , notifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read))
{
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { isDue(); });
}

TimerDescriptors::Timer::~Timer()
{
    notifier.reset();
    ::close(descriptor);
}

void TimerDescriptors::Timer::arm(qint64 units)
{
    itimerspec when{};
    when.it_value.tv_sec = units / unitsPerSecond;
    when.it_value.tv_nsec = units % unitsPerSecond * nanosecondsPerUnit;
    timerfd_settime(descriptor, 0, &when, nullptr);
    due = false;
    unarmed.reset();
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
    std::unique_ptr<Timer> timer;
    if (m_spare.empty()) {
        const int descriptor = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
        if (descriptor < 0)
            return {};
        timer = std::make_unique<Timer>(descriptor);
    } else {
        timer = std::move(m_spare.back());
        m_spare.pop_back();
    }
    timer->name = name;
    m_timers.emplace(++m_last, std::move(timer));
    return {m_last, existed};
}

void TimerDescriptors::set(Handle timer, qint64 dueTime)
{
    // Nothing at all would disarm the timer instead of making it due at once.
    if (const auto found = m_timers.find(timer); found != m_timers.end())
        found->second->unarmed = std::max<qint64>(-dueTime, 1);
}

bool TimerDescriptors::waitOrPump(Handle timer)
{
    const auto found = m_timers.find(timer);
    if (found == m_timers.end())
        return true;
    if (const auto units = found->second->unarmed)
        found->second->arm(*units);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // What the user interface did may have closed timers, but never the one of a wait that is still running.
    return m_timers.at(timer)->isDue();
}

void TimerDescriptors::close(Handle timer)
{
    auto closed = m_timers.extract(timer);
    if (closed.empty() || m_spare.size() == mostSpare)
        return;
    if (!closed.mapped()->due)
        closed.mapped()->arm(0);
    m_spare.push_back(std::move(closed.mapped()));
}

} // namespace plum
