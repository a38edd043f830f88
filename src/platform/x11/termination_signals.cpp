#include "platform/x11/termination_signals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace plum {

namespace {

sigset_t endingSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        sigaddset(&signals, signal);
    return signals;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> end)
    : m_end(std::move(end))
{
    const sigset_t signals = endingSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::readSignal);
}

TerminationSignals::~TerminationSignals()
{
    delete m_notifier;
    close(m_descriptor);
    const sigset_t signals = endingSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

void TerminationSignals::readSignal()
{
    signalfd_siginfo info;
    if (read(m_descriptor, &info, sizeof info) == sizeof info)
        m_end();
}

} // namespace plum
