#include "stepping/run_control.h"

#include <QDir>
#include <QScopeGuard>

#include <utility>

namespace plum {

namespace {

// Scripts may be written on either system.
QString plainName(QString file)
{
    return file.isEmpty() ? file : QDir::cleanPath(file.replace(u'\\', u'/'));
}

} // namespace

void RunControl::setBreakpoints(const QString &file, const QSet<int> &lines)
{
    if (lines.isEmpty())
        m_breakpoints.remove(plainName(file));
    else
        m_breakpoints.insert(plainName(file), lines);
}

void RunControl::standsBefore(RunView &run)
{
    // A run that begins while another one is held goes its way.
    if (m_isHolding || !m_isEnabled)
        return;
    if (const std::optional<Cause> cause = causeFor(run))
        hold({run, *cause});
}

void RunControl::hasFailed(RunView &run, const QString &reason, bool isCaught)
{
    if (!m_isHolding && m_isEnabled && (isCaught ? m_errors.caught : m_errors.uncaught))
        hold({run, Cause::Error, reason, isCaught});
}

std::optional<RunControl::Cause> RunControl::causeFor(const RunView &run)
{
    if (std::exchange(m_isEntryDue, false))
        return Cause::Entry;
    if (isAtBreakpoint(run))
        return Cause::Breakpoint;
    if (m_going != Going::On && hasStepped(run))
        return Cause::Step;
    if (m_isPauseDue.load(std::memory_order_relaxed))
        return Cause::Pause;
    return {};
}

bool RunControl::isAtBreakpoint(const RunView &run) const
{
    if (m_breakpoints.isEmpty())
        return false;
    const RunPlace place = run.place(0);
    const auto lines = m_breakpoints.constFind(plainName(place.file));
    return lines != m_breakpoints.constEnd() && lines->contains(place.line);
}

bool RunControl::hasStepped(const RunView &run) const
{
    switch (m_going) {
    case Going::On:
        return false;
    case Going::Into:
        return true;
    case Going::Over:
        return run.depth() <= m_depth;
    case Going::Out:
        return run.depth() < m_depth;
    }
    Q_UNREACHABLE();
}

void RunControl::hold(const Hold &hold)
{
    m_isHolding = true;
    const auto leave = qScopeGuard([this] { m_isHolding = false; });
    m_isPauseDue = false;
    m_going = Going::On;
    m_depth = hold.run.depth();
    m_going = m_hold(hold);
}

} // namespace plum
