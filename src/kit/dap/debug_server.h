#pragma once

#include "kit/dap/held_run.h"
#include "kit/dap/launch_request.h"

#include <functional>

namespace plum::kit {

// The debug adapter protocol for one run of a script: takes messages and gives messages. It knows nothing of
// streams, nor of how a script is run.
class DebugServer
{
public:
    struct Needs
    {
        ScriptVocabulary vocabulary;
        std::function<void(const QJsonObject &)> send;

        // Has the run begin, once the server is left.
        std::function<void(const LaunchRequest &)> start;

        // The run is held: takes further messages until `isOver`. Leaves with RunStopped when the run is to
        // end.
        std::function<void(const std::function<bool()> &isOver)> hold;

        // Has the run end, once the server is left; it may be held.
        std::function<void()> stop;

        // Gives back what the run holds of the desktop: nothing more is heard of it.
        std::function<void()> letGo;
    };

    explicit DebugServer(Needs needs);
    Q_DISABLE_COPY_MOVE(DebugServer)

    // Not from within itself.
    void take(const QJsonObject &message);

    // Something else has come than a message.
    void refuse(const QString &reason);

    // Who is to hear what the run does.
    RunObserver &observer() { return m_control; }

    // A line that the run, or what is said about it, prints.
    enum class Stream {
        Output,
        Errors,
    };
    void print(Stream stream, const QString &line);

    void runEnded(int status);

    // The editor has ended the talk.
    bool hasEnded() const { return m_hasEnded; }

private:
    enum class State {
        New,
        Initialized,
        Launched, // the script is known; the editor says when it is to begin
        Running,
        Over,
    };

    struct Row
    {
        QStringView command;
        QJsonObject (DebugServer::*answer)(const RequestArguments &arguments);
    };
    static std::span<const Row> rows();

    RunControl::Going held(const RunControl::Hold &hold);
    QJsonObject answerTo(const QString &command, const RequestArguments &arguments);
    void respond(const QJsonObject &request, const QJsonObject &body);
    void respondWithProblem(const QJsonObject &request, const QString &reason);
    void sendEvent(const QString &name, const QJsonObject &body = {});
    void send(QJsonObject message);
    void doAfter(const QString &command);
    const HeldRun &heldRun() const;
    void goOn(RunControl::Going going);
    int lineFrom(const RequestArguments &arguments) const;

    QJsonObject initialize(const RequestArguments &arguments);
    QJsonObject launch(const RequestArguments &arguments);
    QJsonObject configurationDone(const RequestArguments &arguments);
    QJsonObject setBreakpoints(const RequestArguments &arguments);
    QJsonObject breakpointLocations(const RequestArguments &arguments);
    QJsonObject setExceptionBreakpoints(const RequestArguments &arguments);
    QJsonObject threads(const RequestArguments &arguments);
    QJsonObject stackTrace(const RequestArguments &arguments) { return heldRun().stackTrace(arguments); }
    QJsonObject scopes(const RequestArguments &arguments) { return heldRun().scopes(arguments); }
    QJsonObject variables(const RequestArguments &arguments) { return heldRun().variables(arguments); }
    QJsonObject setVariable(const RequestArguments &arguments) { return heldRun().setVariable(arguments); }
    QJsonObject evaluate(const RequestArguments &arguments) { return heldRun().evaluate(arguments); }
    QJsonObject exceptionInfo(const RequestArguments &) { return heldRun().exceptionInfo(); }
    QJsonObject goOnToTheNextHold(const RequestArguments &arguments);
    QJsonObject next(const RequestArguments &arguments);
    QJsonObject stepIn(const RequestArguments &arguments);
    QJsonObject stepOut(const RequestArguments &arguments);
    QJsonObject pause(const RequestArguments &arguments);
    QJsonObject terminate(const RequestArguments &arguments);
    QJsonObject disconnect(const RequestArguments &arguments);

    Needs m_use;
    RunControl m_control;
    SourceBreakpoints m_sources;
    State m_state = State::New;
    HeldRun::Counting m_counting;
    LaunchRequest m_launch;
    bool m_isConfigured = false;
    const HeldRun *m_held = nullptr;
    std::optional<RunControl::Going> m_going; // how the run that is held goes on
    bool m_hasEnded = false;
    int m_lastSent = 0;
};

} // namespace plum::kit
