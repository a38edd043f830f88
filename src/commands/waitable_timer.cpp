#include "commands/waitable_timer.h"

#include "engine/conversions.h"
#include "engine/run_time_error.h"

#include <QDateTime>
#include <QScopeGuard>

#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr double unitsPerMillisecond = 10000;
constexpr double halfRange = 4294967296.0;

constexpr qint64 fromHalves(qint32 high, qint32 low)
{
    return static_cast<qint64>(
        (static_cast<quint64>(static_cast<quint32>(high)) << 32) | static_cast<quint32>(low));
}

// The whole part of a quotient that was written out as text with the 15 digits of the basic library and
// read back, which decides the waits whose quotient lies within one such digit of a whole number.
double wholePartOfText(double quotient)
{
    return std::trunc(QString::number(quotient, 'g', 15).toDouble());
}

double durationOf(const QString &milliseconds)
{
    try {
        return toDouble(milliseconds);
    } catch (const RunTimeError &error) {
        if (error.number() != RunTimeError::TypeMismatch)
            throw;
        throw RunTimeError(RunTimeError::TypeMismatch, ErrorCause::NotMilliseconds, milliseconds);
    }
}

// An error inside a wait says so in front of its own description.
template <typename Wait> void namingTheWait(Wait &&wait)
{
    try {
        wait();
    } catch (const RunTimeError &error) {
        throw RunTimeError(static_cast<RunTimeError::Number>(error.number()),
            u"[clsWaitableTimer.Wait]"_s + error.description());
    }
}

} // namespace

qint64 relativeDueTime(double milliseconds)
{
    const double quotient = milliseconds * unitsPerMillisecond / halfRange;
    const qint32 high = toInt32(-1 - roundHalfToEven(quotient));
    double low = (quotient - wholePartOfText(quotient)) * -halfRange;
    if (low < -2147483648.0)
        low += halfRange;
    return fromHalves(high, toInt32(low));
}

clsWaitableTimer::clsWaitableTimer(WaitableTimers &timers, QString executableName, Clock now)
    : m_timers(timers)
    , m_executableName(std::move(executableName))
    , m_now(std::move(now))
{
}

clsWaitableTimer::~clsWaitableTimer()
{
    m_timers.close(m_current);
}

QString clsWaitableTimer::timerName() const
{
    return m_executableName + u"Timer"_s + m_now().toString(u"mmss"_s);
}

void clsWaitableTimer::Wait(const QString &milliseconds)
{
    namingTheWait([&] { waitFor(durationOf(milliseconds)); });
}

void clsWaitableTimer::Wait(double milliseconds)
{
    namingTheWait([&] { waitFor(milliseconds); });
}

void clsWaitableTimer::Wait(double milliseconds, const std::function<bool()> &isOver)
{
    namingTheWait([&] { waitFor(milliseconds, isOver); });
}

void clsWaitableTimer::waitFor(double milliseconds, const std::function<bool()> &isOver)
{
    const WaitableTimers::Created created = m_timers.create(timerName());
    const WaitableTimers::Handle timer = created.handle;
    // Without a timer the wait would never end.
    if (timer == 0)
        throw RunTimeError(RunTimeError::InvalidProcedureCall, ErrorCause::NoTimer);
    m_current = timer;
    const auto close = qScopeGuard([&] {
        m_timers.close(timer);
        m_current = 0;
    });
    // A timer whose name is new is set once to fire at once; kept for whoever watches the timer by name.
    if (!created.nameExisted)
        m_timers.set(timer, fromHalves(-1, -1));
    m_timers.set(timer, relativeDueTime(milliseconds));
    while (!(isOver && isOver()) && !m_timers.waitOrPump(timer)) { }
}

} // namespace plum
