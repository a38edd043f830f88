#pragma once

#include "engine/editions/later_edition.h"
#include "platform/stop_signal.h"

#include <QString>

#include <functional>
#include <optional>

namespace plum {

class RunStart;
class RunTimeError;
class ScriptError;
struct Message;
struct RunState;

// Starts and resumes the runs of the launcher, and says what became of one that failed.
class ScriptRuns
{
public:
    struct Needs
    {
        std::function<void(const QString &line)> report; // one line on standard error
        std::function<void(const ScriptError &error)> reportMistakes; // as editors and shells read them
        std::function<void(const Message &message)> showMessage;
        std::function<void(int status)> endProcess; // gives the desktop back what the launcher holds of it
        std::function<void()> refused; // a run was not started, since too many wait already
        std::function<void()> began; // a run, while none was under way
        std::function<void()> left; // no run is under way any more
        StopSignal &stop;
        std::function<void()> releaseKeys; // every key and button that a run holds
        std::function<void(const QString &sentence)>
            wentWrong; // a run has failed or was stopped, before it is told
        std::function<void(const RunStopped::Place &where)> stopped; // all runs are over, by the user's wish
    };

    // As shells know a program that was stopped by hand.
    static constexpr int stoppedStatus = 130;

    explicit ScriptRuns(Needs needs);

    // The engine comes later than what scripts see of the launcher.
    void connectEngine(RunState &state, RunStart &starts);

    RunState &state() { return *m_state; }
    const RunState &state() const { return *m_state; }

    // `remembersPath`: the running script's path becomes that of the app.
    void runKeyword(const QString &keyword, bool remembersPath);

    // Runs the whole run list: a script on the command line.
    void runAll();

    // The run that waits for the user has been stopped.
    void stopWaiting();

    // A run shows a tip or a question: what becomes of it is for that run.
    void noteAsking();

    // Whether the run that is suspended has a line left that Enter and Esc would give up. A later edition
    // goes on after them.
    bool hasLinesLeft() const;

    // A run is under way; one that is suspended is not.
    bool isRunning() const { return m_depth > 0; }

    // Go on with a suspended run: with an answer, or because the box was closed.
    void resumeWith(const QString &variable, const QString &text);
    void resumeClosed();

    // The box went by Enter, Esc or the window manager. Edition 1 abandons its run; later editions go on, and
    // take Enter for an answer.
    void resumeDismissed(bool withEnter, const QString &variable, const QString &text);

private:
    void guarded(const std::function<void()> &run);
    void fail(const RunTimeError &error);
    void fail(const ScriptError &error);
    void resumeLater(const Answer &answer);
    void catchStop(const RunStopped &stopped);
    void tellStopped();
    QString lineOf(const RunTimeError &error) const;

    Needs m;
    int m_depth = 0; // runs that were started inside the waits of others
    RunState *m_state = nullptr;
    RunStart *m_starts = nullptr;
    std::optional<RunStopped::Place> m_stopped; // the innermost of those that are being left
    QString m_askingKeyword; // of the run that waits for the user
    RunTicket m_asking = 0; // the run of a later edition whose tip or question is shown
};

} // namespace plum
