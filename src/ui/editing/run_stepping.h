#pragma once

#include "platform/desktop_windows.h"
#include "stepping/run_control.h"
#include "ui/editing/held_line.h"

#include <QObject>

#include <functional>
#include <optional>

class QEventLoop;

namespace plum {

class EditPanel;
class ScriptVocabulary;
class StopSignal;
struct RunState;

// Follows a run of the script that is open in the editor: holds it there at breakpoints, after steps and at
// errors, until the user says how it is to go on. It outlives whatever runs scripts, so its end leaves that
// alone.
class RunStepping final : public QObject
{
    Q_OBJECT

public:
    struct Needs
    {
        EditPanel &panel;
        RunState &state;
        StopSignal &stop;
        const ScriptVocabulary &vocabulary;
        std::function<bool()> isRunning; // a run is under way; one that waits for the user is not
        std::function<bool()> isAsking; // one waits for the user
        std::function<void()> stopRuns; // as the user's own wish
        // Brings the editor forward and says what was in front until then; 0: nothing that wants to be again.
        std::function<WindowHandle()> comeForward;
        std::function<void(WindowHandle window)> giveWay; // to what was in front
    };

    explicit RunStepping(Needs needs);
    Q_DISABLE_COPY_MOVE(RunStepping)

    // Carries out `run`, which starts a run of the script in the editor, the app `keyword`.
    void follow(const QString &keyword, FollowFrom from, const std::function<void()> &run);

    // No run is under way any more, and none waits for the user.
    void runsAreOver();

    // The line, from 1, before which a run is held.
    std::optional<int> heldLine() const;

private:
    void tellBreakpoints(bool alsoCaret);
    RunControl::Going hold(const RunControl::Hold &hold);
    void take(FollowedRunWish wish);
    void goOn(RunControl::Going going, bool toCaret = false);
    void letGo();
    void changeVariable(const QString &name, const QString &value);
    HeldLine describe(const RunControl::Hold &hold) const;

    Needs m;
    std::optional<RunControl> m_control; // while a run is followed
    RunObserver *m_observerBefore = nullptr;
    const RunControl::Hold *m_held = nullptr; // while a run is held
    QEventLoop *m_loop = nullptr; // that holds it
    std::optional<RunControl::Going> m_going; // the user's wish
};

} // namespace plum
