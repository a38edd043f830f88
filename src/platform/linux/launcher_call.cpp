#include "platform/launcher_call.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace plum {

namespace {

// A process without a handler ignores it.
constexpr int callingSignal = SIGURG;

// A signal handler is told nothing but the signal's number, so where it reports to has to be static.
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
    sigaction(callingSignal, &action, nullptr);
}

class SignalledCall final : public LauncherCall
{
public:
    explicit SignalledCall(std::function<void()> answer)
        : m_answer(std::move(answer))
        , m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
        , m_notifier(std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read))
    {
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
            quint64 count = 0;
            if (read(m_descriptor, &count, sizeof count) == sizeof count)
                m_answer();
        });
        reportTo = m_descriptor;
        handleWith(report);
    }

    ~SignalledCall() override
    {
        handleWith(SIG_DFL);
        reportTo = -1;
        m_notifier.reset();
        close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(SignalledCall)

private:
    std::function<void()> m_answer;
    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace

std::unique_ptr<LauncherCall> LauncherCall::listen(std::function<void()> answer)
{
    return std::make_unique<SignalledCall>(std::move(answer));
}

void LauncherCall::call(qint64 process)
{
    kill(static_cast<pid_t>(process), callingSignal);
}

} // namespace plum
