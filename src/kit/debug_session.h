#pragma once

#include "kit/dap/debug_server.h"
#include "kit/messages/message_stream.h"
#include "kit/run_options.h"
#include "platform/platform.h"

#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QTemporaryDir>
#include <QTimer>

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>

namespace plum {
class StopSignal;
}

namespace plum::kit {

class DryRun;
class ScriptRun;

// One run of a script for a debugger on the other end of two streams. A thread reads what the debugger says,
// so that a run that lasts can be ended; everything else is done in the event loop, which goes on while the
// run is held.
class DebugSession final : public QObject
{
    Q_OBJECT

public:
    DebugSession(const QString &programPath, bool hasDesktop, const TalkFiles &files);
    ~DebugSession() override;
    Q_DISABLE_COPY_MOVE(DebugSession)

    // Ends the process when the debugger has ended the talk.
    [[noreturn]] void serve();

private:
    void read();
    std::optional<ReceivedMessage> nextHeard();
    void takeAll();
    void take(const ReceivedMessage &message);
    void start(const LaunchRequest &request);
    void startRun();
    void startDryRun();
    void breathe();
    void hold(const std::function<bool()> &isOver);
    void outOfTime();
    [[noreturn]] void runEnded(Status status);
    void letGo();
    [[noreturn]] void endProcess(bool isInOrder);

    QFile m_input;
    QFile m_output;
    MessageStream m_messages;
    std::unique_ptr<ScriptRun> m_run; // its vocabulary serves dry runs, too
    std::unique_ptr<DryRun> m_dryRun;
    std::optional<QTemporaryDir> m_scratch; // of a dry run
    DebugServer m_server;
    LaunchRequest m_request;
    std::atomic<StopSignal *> m_stop = nullptr; // of the run that goes on
    std::mutex m_hearing;
    std::deque<ReceivedMessage> m_heard; // and not yet taken
    bool m_isTaking = false;
    QTimer m_timeout;
    bool m_isLate = false;
    bool m_isOver = false;
    QElapsedTimer m_sinceBreath;
};

} // namespace plum::kit
