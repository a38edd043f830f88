#pragma once

#include "engine/edition2/program.h"
#include "engine/edition2/run_telling.h"
#include "engine/editions/later_edition.h"
#include "engine/variable_store.h"

#include <QElapsedTimer>

namespace plum {
class ArgumentReader;
class Launcher;
class RunObserver;
class StopSignal;
class TextFiles;
class Waiter;
struct RunState;
} // namespace plum

namespace plum::edition2 {

// Where a run stands, as a value: nothing of it is on the C++ stack when the run waits for the user.
struct RunPosition
{
    struct Loop
    {
        QStringList items = {}; // of each and lines
        qint64 count = 0;
        qint64 done = 0;
        QString variable = {};
        bool counts = false; // the variable gets the number of the pass
    };
    struct Try
    {
        int target = 0;
        int loops = 0;
        QString variable = {}; // receives the reason
    };
    struct Frame
    {
        int next = 0; // the instruction that comes next
        VariableStore variables = {};
        std::vector<Loop> loops = {};
        std::vector<Try> tries = {};
        QString result = {}; // the caller's variable for what the part returns
    };

    std::vector<Frame> frames;
    double pause = 10; // milliseconds before commands that touch the desktop
};

// Parts call each other at most so deep.
inline constexpr std::size_t deepestCall = 1000;

// Runs scripts of edition 2.
class Runner final : public LaterEdition
{
public:
    struct Needs
    {
        RunState &state;
        const ArgumentReader &reader;
        Waiter &waiter;
        Launcher &launcher;
        const TextFiles &files;
        std::function<void()> breathe; // lets the user interface do what is due
        std::function<ScriptVocabulary()> vocabulary;
        std::function<Handler *(const QString &nameSpace)> handler;
        const StopSignal *stop = nullptr; // looked at before each command
    };

    explicit Runner(Needs needs);
    ~Runner() override;
    Q_DISABLE_COPY_MOVE(Runner)

    void run(const ScriptStart &script) override;
    RunTicket current() const override { return m_current; }
    void resume(RunTicket ticket, const Answer &answer) override;
    void endWaitingRun() override { m_waiting.reset(); }

    // The variables that a script finds when it begins.
    void presetVariable(const QString &name, const QString &value) { m_presets.SetVar(name, value); }

private:
    struct Run;
    struct Failure;
    class View;

    static constexpr int linesBetweenLooks = 256; // at the clock, which costs more than a line

    Linked link(const ScriptStart &script);
    void goOn(const std::shared_ptr<Run> &run);
    void stepUntilDone(const std::shared_ptr<Run> &run);
    bool step(const std::shared_ptr<Run> &run);
    bool carryOut(const std::shared_ptr<Run> &run, const Instruction &instruction);
    bool observedStep(const std::shared_ptr<Run> &run);
    bool toldStep(const std::shared_ptr<Run> &run, const Instruction &instruction, RunObserver &observer);
    bool passedSteps(const std::shared_ptr<Run> &run, RunObserver &observer);
    void standBefore(const std::shared_ptr<Run> &run, const Instruction &instruction);
    void tellOfFailure(Run &run, const Failure &failure);
    void setVariable(RunPosition::Frame &frame, const QString &name, const QString &value);
    bool isHolding(const Run &run, const Instruction &instruction) const;
    bool callHandler(const std::shared_ptr<Run> &run, const Instruction &instruction);
    void recover(Run &run, const Failure &failure);
    void beginLoop(Run &run, const Instruction &instruction);
    void nextPass(Run &run, const Instruction &instruction);
    void runPart(Run &run, const Instruction &instruction);
    void returnFromPart(Run &run, const Instruction &instruction);
    void finish(const Run &run);
    void breathe();
    void enterContext(const Run &run);

    void requireAllowed(Position at) const;
    QString valueOf(const Run &run, const Operand &operand) const;
    QString textOf(const RunPosition::Frame &frame, const Operand &operand) const;

    Needs m_use;
    ScriptVocabulary m_vocabulary; // made with the first script
    VariableStore m_presets;
    std::shared_ptr<Run> m_waiting;
    RunTicket m_current = 0;
    RunTicket m_last = 0;
    QElapsedTimer m_sinceBreath;
    int m_lines = 0; // since the last look at the clock

    mutable RunTelling m_telling; // for who observes the runs
};

} // namespace plum::edition2
