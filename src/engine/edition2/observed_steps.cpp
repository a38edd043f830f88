// Steps of the runner that somebody hears of.

#include "engine/edition2/runner_view.h"
#include "engine/run_state.h"
#include "platform/stop_signal.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace plum::edition2 {

bool Runner::observedStep(const std::shared_ptr<Run> &run)
{
    const Instruction &next = run->next();
    RunObserver &observer = *m_use.state.observer;
    if (observer.holdsRuns())
        standBefore(run, next);
    if (!RunTelling::isOfInterest(next))
        return step(run);
    return m_telling.passes(observer, next) ? passedSteps(run, observer) : toldStep(run, next, observer);
}

// The first pass of a repetition begins with the line that has just begun it.
void Runner::standBefore(const std::shared_ptr<Run> &run, const Instruction &instruction)
{
    const bool isFirstPass = instruction.step == Step::NextPass && run->frame().loops.back().done == 0;
    if (instruction.isImplied || isFirstPass)
        return;
    View view(*this, *run, std::size_t(run->frame().next));
    try {
        m_use.state.observer->standsBefore(view);
    } catch (RunStopped &stopped) {
        stopped.setPlace(run->placeOf(instruction));
        throw;
    }
}

void Runner::tellOfFailure(Run &run, const Failure &failure)
{
    if (!m_use.state.observer || !m_use.state.observer->holdsRuns() || failure.gaveUp)
        return;
    const bool isCaught = std::ranges::any_of(
        run.position.frames, [](const RunPosition::Frame &frame) { return !frame.tries.empty(); });
    const std::size_t index = std::size_t(run.frame().next) - 1;
    View view(*this, run, index);
    try {
        m_use.state.observer->hasFailed(view, failure.reason, isCaught);
    } catch (RunStopped &stopped) {
        stopped.setPlace(run.placeOf(run.program->instructions[index]));
        throw;
    }
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

// A line that is not told of, and those behind it that are not either, with as little about each as can be:
// a line takes a fifth of a microsecond. The one with which the run is left is told of all the same.
bool Runner::passedSteps(const std::shared_ptr<Run> &run, RunObserver &observer)
{
    m_use.state.observer = nullptr;
    const auto listens = qScopeGuard([&] { m_use.state.observer = &observer; });
    const int most = observer.holdsRuns() ? 1 : m_telling.mostToPass();
    const Instruction *instruction = nullptr;
    int steps = 0;
    int passed = 0;
    const auto notePassed = [&] { m_telling.notePassed(std::exchange(passed, 0)); };
    const auto count = qScopeGuard([&] {
        m_lines += steps;
        notePassed();
    });
    const auto tell = [&](RunObserver::LineEnd how, const QString &reason) {
        notePassed();
        m_telling.begin(observer, run->script.keyword, *run->program, *instruction);
        int field = 0;
        for (const Operand &operand : instruction->single) {
            if (operand.kind == Operand::Kind::Variable)
                observer.fieldRead(field, run->frame().variables.GetVar(operand.text));
            else if (operand.kind == Operand::Kind::Constant)
                observer.fieldRead(field, operand.text);
            ++field;
        }
        observer.lineEnds(how, reason);
    };
    try {
        while (steps < most && run->next().onlyComputes) {
            instruction = &run->takeNext();
            if (!carryOut(run, *instruction)) {
                if (RunTelling::isOfInterest(*instruction))
                    tell(RunObserver::LineEnd::Rests, {});
                return false;
            }
            ++steps;
            passed += RunTelling::isOfInterest(*instruction) ? 1 : 0;
        }
        return true;
    } catch (const Failure &failure) {
        tell(RunObserver::LineEnd::Failed, failure.reason);
        throw;
    } catch (const RunStopped &) {
        tell(RunObserver::LineEnd::Stopped, {});
        throw;
    }
}

} // namespace plum::edition2
