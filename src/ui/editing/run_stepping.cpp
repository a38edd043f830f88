#include "ui/editing/run_stepping.h"

#include "engine/run_state.h"
#include "platform/stop_signal.h"
#include "stepping/line_arguments.h"
#include "ui/editing/edit_panel.h"

#include <QEventLoop>
#include <QScopeGuard>

#include <utility>

namespace plum {

RunStepping::RunStepping(Needs needs)
    : m(std::move(needs))
{
    connect(&m.panel, &EditPanel::followedRunWished, this, &RunStepping::take);
    connect(&m.panel, &EditPanel::heldVariableChanged, this, &RunStepping::changeVariable);
    connect(&m.panel, &EditPanel::scriptLeft, this, &RunStepping::letGo);
    connect(&m.stop, &StopSignal::raised, this, [this] {
        if (m_loop)
            m_loop->quit();
    });
}

void RunStepping::follow(const QString &keyword, FollowFrom from, const std::function<void()> &run)
{
    if (m.isRunning()) {
        m.panel.say(tr("Another run goes on. This one can be followed when that one is over."));
        return;
    }
    runsAreOver(); // one that waits for the user ends with the next run
    m_control.emplace([this](const RunControl::Hold &hold) { return this->hold(hold); });
    m_control->setHoldsAtErrors({.uncaught = true});
    m_control->holdOnly(keyword);
    m_observerBefore = std::exchange(m.state.observer, &*m_control);
    m_control->tellAlso(m_observerBefore);
    tellBreakpoints(from == FollowFrom::Caret);
    if (from == FollowFrom::Entry)
        m_control->holdAtEntry();
    m.panel.beginFollowing();
    run();
    // It may not have begun at all.
    if (!m.isRunning() && !m.isAsking())
        runsAreOver();
}

void RunStepping::runsAreOver()
{
    if (!m_control)
        return;
    m.state.observer = m_observerBefore;
    m_control.reset();
    m.panel.endFollowing();
}

std::optional<int> RunStepping::heldLine() const
{
    return m_held ? std::optional(m_held->run.place(0).line) : std::nullopt;
}

// Whoever leaves the script does not see any more what a held run would do.
void RunStepping::letGo()
{
    if (!m_control)
        return;
    m_control->setEnabled(false);
    m.panel.endFollowing();
    if (m_held)
        m.stopRuns();
}

void RunStepping::tellBreakpoints(bool alsoCaret)
{
    QSet<int> lines;
    for (const int line : m.panel.breakpoints())
        lines += m.panel.runLineOf(line);
    if (const std::optional<int> line = m.panel.runnableLineAtCaret(); line && alsoCaret)
        lines += m.panel.runLineOf(*line);
    m_control->setBreakpoints({}, lines);
}

RunControl::Going RunStepping::hold(const RunControl::Hold &hold)
{
    m.stop.check();
    const WindowHandle front = m.comeForward();
    m_held = &hold;
    m.panel.showHeld(describe(hold));
    QEventLoop loop;
    m_loop = &loop;
    m_going.reset();
    {
        const auto leave = qScopeGuard([this] {
            m_loop = nullptr;
            m_held = nullptr;
            m.panel.showGoing();
        });
        loop.exec();
    }
    m.stop.check();
    if (!m_going)
        throw RunStopped();
    // What comes next is meant for the window that the run was at.
    m.giveWay(front);
    return *m_going;
}

void RunStepping::take(FollowedRunWish wish)
{
    using Going = RunControl::Going;
    switch (wish) {
    case FollowedRunWish::GoOn:
        return goOn(Going::On);
    case FollowedRunWish::RunToCaret:
        return goOn(Going::On, true);
    case FollowedRunWish::StepOver:
        return goOn(Going::Over);
    case FollowedRunWish::StepInto:
        return goOn(Going::Into);
    case FollowedRunWish::StepOut:
        return goOn(Going::Out);
    case FollowedRunWish::Hold:
        if (m_control && !m_held)
            m_control->pause();
        return;
    case FollowedRunWish::Stop:
        m.stopRuns();
        return;
    }
}

// Breakpoints may have been set and taken away meanwhile.
void RunStepping::goOn(RunControl::Going going, bool toCaret)
{
    if (!m_held)
        return;
    tellBreakpoints(toCaret);
    m_going = going;
    m_loop->quit();
}

void RunStepping::changeVariable(const QString &name, const QString &value)
{
    if (!m_held)
        return;
    m_held->run.setVariable(0, name, value);
    // What the line comes to may be another thing now; the list that tells of the change is still at it.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_held)
                m.panel.showHeldValues(describe(*m_held));
        },
        Qt::QueuedConnection);
}

HeldLine RunStepping::describe(const RunControl::Hold &hold) const
{
    const RunPlace place = hold.run.place(0);
    HeldLine held;
    if (place.file.isEmpty())
        held.line = m.panel.shownLineOf(place.line);
    const int number = held.line ? *held.line + 1 : place.line;
    held.words = hold.cause == RunControl::Cause::Error
        ? tr("Line %1 has failed: %2").arg(number).arg(hold.reason)
        : held.line
        ? tr("Held before line %1").arg(number)
        : tr("Held before line %1 of %2: %3").arg(number).arg(place.file, hold.run.text(0).trimmed());
    for (const LineArgument &argument : argumentsOf(hold.run, 0, m.vocabulary)) {
        const Evaluation found = valueOf(hold.run, 0, argument);
        held.arguments += {argument.name, found.problem.isEmpty() ? found.value : found.problem};
    }
    for (const QString &name : hold.run.variables(0))
        held.variables += {name, hold.run.variable(0, name)};
    return held;
}

} // namespace plum
