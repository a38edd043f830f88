#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

namespace plum {

// Turns the signals that ask a process to end (hang-up, interrupt, terminate) into a call from the event
// loop. At most one instance exists at a time, since signals belong to the process.
class TerminationSignals final : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(std::function<void()> end);
    ~TerminationSignals() override;

private:
    void readSignal();

    std::function<void()> m_end;
    int m_descriptor = -1; // of a signalfd
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace plum
