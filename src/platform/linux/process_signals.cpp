#include "platform/linux/process_signals.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace plum {

namespace {

// A signal handler is told nothing but the signal's number, so where it reports to has to be static: a
// descriptor for each signal, 0 for none. Blocking the signals and reading them from a descriptor would need
// no handler, but threads that were started before, such as Qt's, would still receive them.
std::array<std::atomic<int>, NSIG> reportTo;
static_assert(std::atomic<int>::is_always_lock_free);

void report(int signal)
{
    const int savedError = errno;
    const quint64 one = 1;
    const int descriptor = reportTo[static_cast<size_t>(signal)];
    [[maybe_unused]] const ssize_t written = descriptor == 0 ? 0 : write(descriptor, &one, sizeof one);
    errno = savedError;
}

void handleWith(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

} // namespace

ProcessSignals::ProcessSignals(std::vector<int> signalNumbers, std::function<void()> call)
    : m_signals(std::move(signalNumbers))
    , m_call(std::move(call))
    , m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this))
{
    connect(m_notifier, &QSocketNotifier::activated, this, &ProcessSignals::readSignal);
    for (const int signal : m_signals) {
        reportTo[static_cast<size_t>(signal)] = m_descriptor;
        handleWith(signal, report);
    }
}

ProcessSignals::~ProcessSignals()
{
    for (const int signal : m_signals) {
        handleWith(signal, SIG_DFL);
        reportTo[static_cast<size_t>(signal)] = 0;
    }
    delete m_notifier;
    close(m_descriptor);
}

void ProcessSignals::readSignal()
{
    quint64 count;
    if (read(m_descriptor, &count, sizeof count) == sizeof count)
        m_call();
}

std::vector<int> endingSignals()
{
    return {SIGHUP, SIGINT, SIGTERM};
}

int fetchingSignal()
{
    return SIGURG;
}

} // namespace plum
