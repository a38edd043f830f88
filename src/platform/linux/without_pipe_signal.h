#pragma once

#include <QtGlobal>

#include <csignal>
#include <time.h>

namespace plum {

// While one lives, a program that dies while this thread writes to it does not take this process with it.
class WithoutPipeSignal
{
public:
    WithoutPipeSignal()
    {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
    }
    ~WithoutPipeSignal()
    {
        // One that this thread caused is still pending and would arrive now.
        const timespec atOnce{};
        if (!sigismember(&m_before, SIGPIPE))
            sigtimedwait(&m_pipe, nullptr, &atOnce);
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    Q_DISABLE_COPY_MOVE(WithoutPipeSignal)

private:
    sigset_t m_pipe{};
    sigset_t m_before{};
};

} // namespace plum
