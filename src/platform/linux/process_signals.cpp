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

using Slot = std::atomic<int>;
static_assert(Slot::is_always_lock_free);

// A signal handler is told nothing but the signal's number, so where it reports to has to be static. Blocking
// the signals and reading them from a descriptor would need no handler, but threads that were started before,
// such as Qt's, would still receive them. A slot holds one more than the descriptor, so that zero is none.
std::array<Slot, NSIG> reportTo;

void report(int number)
{
    const int savedError = errno;
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written
        = write(reportTo[static_cast<size_t>(number)] - 1, &one, sizeof one);
    errno = savedError;
}

void handle(const std::vector<int> &numbers, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : numbers)
        sigaction(number, &action, nullptr);
}

void reportAllTo(const std::vector<int> &numbers, int descriptor)
{
    for (const int number : numbers)
        reportTo[static_cast<size_t>(number)] = descriptor + 1;
}

} // namespace

ProcessSignals::ProcessSignals(std::vector<int> numbers, std::function<void()> heard)
    : m_numbers(std::move(numbers))
    , m_heard(std::move(heard))
    , m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read))
{
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        quint64 count = 0;
        if (read(m_descriptor, &count, sizeof count) == sizeof count)
            m_heard();
    });
    reportAllTo(m_numbers, m_descriptor);
    handle(m_numbers, report);
}

ProcessSignals::~ProcessSignals()
{
    handle(m_numbers, SIG_DFL);
    reportAllTo(m_numbers, -1);
    m_notifier.reset();
    close(m_descriptor);
}

} // namespace plum
