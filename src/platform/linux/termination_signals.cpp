#include "platform/linux/termination_signals.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace plum {

namespace {

constexpr std::array endingSignals{SIGHUP, SIGINT, SIGTERM};

// A signal handler is told nothing but the signal's number, so where it reports to has to be static. Blocking
// the signals and reading them from a descriptor would need no handler, but threads that were started before,
// such as Qt's, would still receive them.
std::atomic<int> reportTo = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void report(int)
{
    const int savedError = errno;
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = write(reportTo, &one, sizeof one);
    errno = savedError;
}

void handleWith(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : endingSignals)
        sigaction(signal, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> end)
    : m_end(std::move(end))
    , m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this))
{
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::readSignal);
    reportTo = m_descriptor;
    handleWith(report);
}

TerminationSignals::~TerminationSignals()
{
    handleWith(SIG_DFL);
    reportTo = -1;
    delete m_notifier;
    close(m_descriptor);
}

void TerminationSignals::readSignal()
{
    quint64 count;
    if (read(m_descriptor, &count, sizeof count) == sizeof count)
        m_end();
}

} // namespace plum
