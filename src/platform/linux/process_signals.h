#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <vector>

class QSocketNotifier;

namespace plum {

// Turns signals that this process is sent into a call from the event loop, whichever thread they arrive in.
// At most one instance exists at a time for each signal, since signals belong to the process; afterwards they
// do again what they do in a process that does not handle them.
class ProcessSignals
{
public:
    ProcessSignals(std::vector<int> numbers, std::function<void()> heard);
    ~ProcessSignals();
    Q_DISABLE_COPY_MOVE(ProcessSignals)

private:
    std::vector<int> m_numbers;
    std::function<void()> m_heard;
    int m_descriptor = -1; // of an eventfd, which the signal handler writes to
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace plum
