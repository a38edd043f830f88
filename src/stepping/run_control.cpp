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
    if (!mayHold(run))
        return;
    if (const std::optional<Cause> cause = causeFor(run))
        hold({run, *cause});
}

void RunControl::hasFailed(RunView &run, const QString &reason, bool isCaught)
{
    if (mayHold(run) && (isCaught ? m_errors.caught : m_errors.uncaught))
        hold({run, Cause::Error, reason, isCaught});
}

// A run that begins while another one is held goes its way.
bool RunControl::mayHold(const RunView &run) const
{
    return !m_isHolding && m_isEnabled && (m_script.isEmpty() || run.name(run.depth() - 1) == m_script);
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

void RunControl::runBegins(const QString &script)
{
    if (m_also)
        m_also->runBegins(script);
}

void RunControl::lineBegins(const RunLine &line)
{
    if (m_also)
        m_also->lineBegins(line);
}

void RunControl::fieldRead(int index, const QString &value)
{
    if (m_also)
        m_also->fieldRead(index, value);
}

void RunControl::variableSet(const QString &name, const QString &value)
{
    if (m_also)
        m_also->variableSet(name, value);
}

void RunControl::answered(const QString &answer)
{
    if (m_also)
        m_also->answered(answer);
}

void RunControl::refused(const QString &sentence)
{
    if (m_also)
        m_also->refused(sentence);
}

void RunControl::lineEnds(LineEnd how, const QString &reason)
{
    if (m_also)
        m_also->lineEnds(how, reason);
}

void RunControl::linesPassed(qint64 count)
{
    if (m_also)
        m_also->linesPassed(count);
}

} // namespace plum
