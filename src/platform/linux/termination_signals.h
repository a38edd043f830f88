#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

namespace plum {

// Turns the signals that ask a process to end (hang-up, interrupt, terminate) into a call from the event
// loop, whichever thread they arrive in. At most one instance exists at a time, since signals belong to the
// process.
class TerminationSignals final : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(std::function<void()> end);
    ~TerminationSignals() override;

private:
    void readSignal();

    std::function<void()> m_end;
    int m_descriptor = -1; // of an eventfd, which the signal handler writes to
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace plum
