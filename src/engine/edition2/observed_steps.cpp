// Steps of the runner that somebody hears of.

#include "engine/edition2/runner_run.h"
#include "engine/run_state.h"
#include "platform/stop_signal.h"

#include <QScopeGuard>

namespace plum::edition2 {

bool Runner::observedStep(const std::shared_ptr<Run> &run)
{
    const Instruction &next = run->program->instructions[std::size_t(run->frame().next)];
    RunObserver &observer = *m_use.state.observer;
    if (!RunTelling::isOfInterest(next))
        return step(run);
    return m_telling.passes(observer, next) ? passedStep(run, next, observer) : toldStep(run, next, observer);
}

bool Runner::toldStep(const std::shared_ptr<Run> &run, const Instruction &instruction, RunObserver &observer)
{
    using LineEnd = RunObserver::LineEnd;
    m_telling.begin(observer, run->script.keyword, *run->program, instruction);
    try {
        const bool goesOn = step(run);
        observer.lineEnds(goesOn ? LineEnd::Done : LineEnd::Rests, {});
        return goesOn;
    } catch (const Failure &failure) {
        observer.lineEnds(LineEnd::Failed, failure.reason);
        throw;
    } catch (const RunStopped &) {
        observer.lineEnds(LineEnd::Stopped, {});
        throw;
    }
}

// A line that is not told of, unless it turns out that the run is left with it.
bool Runner::passedStep(
    const std::shared_ptr<Run> &run, const Instruction &instruction, RunObserver &observer)
{
    m_use.state.observer = nullptr;
    const auto listens = qScopeGuard([&] { m_use.state.observer = &observer; });
    const VariableStore &variables = run->frame().variables;
    const auto tell = [&](RunObserver::LineEnd how, const QString &reason) {
        m_telling.begin(observer, run->script.keyword, *run->program, instruction);
        int field = 0;
        for (const Operand &operand : instruction.single) {
            if (operand.kind == Operand::Kind::Variable)
                observer.fieldRead(field, variables.GetVar(operand.text));
            else if (operand.kind == Operand::Kind::Constant)
                observer.fieldRead(field, operand.text);
            ++field;
        }
        observer.lineEnds(how, reason);
    };
    try {
        const bool goesOn = step(run);
        if (!goesOn)
            tell(RunObserver::LineEnd::Rests, {});
        return goesOn;
    } catch (const Failure &failure) {
        tell(RunObserver::LineEnd::Failed, failure.reason);
        throw;
    }
}

} // namespace plum::edition2
