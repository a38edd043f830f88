#pragma once

#include "engine/editions/run_observer.h"
#include "engine/editions/run_view.h"

#include <QHash>
#include <QSet>

#include <atomic>
#include <functional>
#include <optional>

namespace plum {

// Holds runs at breakpoints, after steps, at errors and when asked to, and says so to who holds them.
class RunControl final : public RunObserver
{
public:
    enum class Cause {
        Entry,
        Breakpoint,
        Step,
        Pause,
        Error,
    };

    struct Hold
    {
        RunView &run;
        Cause cause = Cause::Pause;
        QString reason = {}; // of an error
        bool isCaught = false; // by the script
    };

    // How a run goes on: until something holds it, to the next line, to the next one of this part or out of
    // it.
    enum class Going {
        On,
        Into,
        Over,
        Out,
    };

    // Called where a run is held; the run goes on when it returns, and ends when it leaves with RunStopped.
    using HoldRun = std::function<Going(const Hold &hold)>;

    explicit RunControl(HoldRun hold)
        : RunObserver(true)
        , m_hold(std::move(hold))
    {
    }

    // Who hears of the same runs; null: nobody else.
    void tellAlso(RunObserver *observer) { m_also = observer; }

    // Of several runs only those of this script, by its name; empty: of all.
    void holdOnly(const QString &script) { m_script = script; }

    // Off, it holds nowhere; on at first.
    void setEnabled(bool isEnabled) { m_isEnabled = isEnabled; }

    struct Errors
    {
        bool uncaught = false; // which end the run
        bool caught = false;
    };
    void setHoldsAtErrors(Errors errors) { m_errors = errors; }

    // In place of all that were set in that file before; empty: the script itself. A part's file is named as
    // the script names it.
    void setBreakpoints(const QString &file, const QSet<int> &lines);

    // Holds at the first line.
    void holdAtEntry() { m_isEntryDue = true; }

    // Holds at the next line. In any thread.
    void pause() { m_isPauseDue = true; }

    void standsBefore(RunView &run) override;
    void hasFailed(RunView &run, const QString &reason, bool isCaught) override;

    void runBegins(const QString &script) override;
    void lineBegins(const RunLine &line) override;
    void fieldRead(int index, const QString &value) override;
    void variableSet(const QString &name, const QString &value) override;
    void answered(const QString &answer) override;
    void refused(const QString &sentence) override;
    void lineEnds(LineEnd how, const QString &reason) override;
    void linesPassed(qint64 count) override;
    bool wantsEveryLine() const override { return m_also && m_also->wantsEveryLine(); }

private:
    bool mayHold(const RunView &run) const;
    std::optional<Cause> causeFor(const RunView &run);
    bool isAtBreakpoint(const RunView &run) const;
    bool hasStepped(const RunView &run) const;
    void hold(const Hold &hold);

    HoldRun m_hold;
    RunObserver *m_also = nullptr;
    QString m_script;
    QHash<QString, QSet<int>> m_breakpoints; // by file
    Errors m_errors;
    Going m_going = Going::On;
    int m_depth = 0; // of the run when it was held last
    bool m_isEnabled = true;
    bool m_isHolding = false;
    bool m_isEntryDue = false;
    std::atomic<bool> m_isPauseDue = false;
};

} // namespace plum
