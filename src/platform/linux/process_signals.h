#pragma once

#include <QObject>

#include <functional>
#include <vector>

class QSocketNotifier;

namespace plum {

// Turns signals to this process into a call from the event loop, whichever thread they arrive in. A signal
// has one such object at most, since signals belong to the process.
class ProcessSignals final : public QObject
{
    Q_OBJECT

public:
    ProcessSignals(std::vector<int> signalNumbers, std::function<void()> call);
    ~ProcessSignals() override;

private:
    void readSignal();

    std::vector<int> m_signals;
    std::function<void()> m_call;
    int m_descriptor = -1; // of an eventfd, which the signal handler writes to
    QSocketNotifier *m_notifier = nullptr;
};

// Those that ask a process to end: hang-up, interrupt, terminate.
std::vector<int> endingSignals();

// The one by which another process of Plum's asks the launcher to come forward. A process that does not
// handle it is not harmed by it.
int fetchingSignal();

} // namespace plum
