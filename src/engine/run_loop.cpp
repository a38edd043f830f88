#include "engine/run_loop.h"

#include "engine/conversions.h"
#include "engine/editions/run_observer.h"
#include "engine/editions/run_view.h"
#include "engine/launcher.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/text_functions.h"
#include "engine/waiter.h"
#include "platform/stop_signal.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The pause before each line keeps the desktop and the user interface able to follow a script.
constexpr double linePause = 10;

// A run of edition 1 before line `index` of the run list, or at that line when it has failed.
class ListView final : public RunView
{
public:
    ListView(RunState &state, const ArgumentReader &reader, const std::shared_ptr<const RunLimit> &limit,
        int index)
        : m_state(state)
        , m_reader(reader)
        , m_limit(limit)
        , m_index(index)
    {
    }

    int edition() const override { return 1; }
    int depth() const override { return 1; }
    RunPlace place(int) const override { return {{}, m_index + 1}; }
    QString name(int frame) const override;
    QString text(int frame) const override;
    QStringList variables(int frame) const override;
    QString variable(int frame, const QString &name) const override;
    void setVariable(int frame, const QString &name, const QString &value) override;
    Evaluation evaluate(int frame, const QString &expression) override;

private:
    RunState &m_state;
    const ArgumentReader &m_reader;
    const std::shared_ptr<const RunLimit> &m_limit;
    int m_index;
};

QString ListView::name(int) const
{
    const QString &path = m_state.runctx[0];
    const qsizetype separator = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    return m_state.currentKeyword.isEmpty() ? path.sliced(separator + 1) : m_state.currentKeyword;
}

QString ListView::text(int) const
{
    return m_state.runlist.value(m_index);
}

QStringList ListView::variables(int) const
{
    return m_state.vardict.names();
}

QString ListView::variable(int, const QString &name) const
{
    return m_state.vardict.GetVar(name);
}

void ListView::setVariable(int, const QString &name, const QString &value)
{
    m_state.vardict.SetVar(name, value);
}

Evaluation ListView::evaluate(int, const QString &expression)
{
    const Aside aside(m_state, m_limit);
    try {
        // As a piece of a line, in which the loop has put commas aside.
        QString piece = expression;
        QString value
            = m_reader.EvalArg(piece.replace(commaEscape, commaPlaceholder), UnknownVariable::IsItsName);
        return {value, aside.refused()};
    } catch (const RunTimeError &error) {
        return {.problem = error.description()};
    }
}

} // namespace

RunLoop::RunLoop(RunState &state, const ArgumentReader &reader, Waiter &waiter, Launcher &launcher)
    : m_state(state)
    , m_reader(reader)
    , m_waiter(waiter)
    , m_launcher(launcher)
{
}

void RunLoop::addNamespace(const QString &name, Handler &handler)
{
    m_handlers.insert(name, &handler);
}

void RunLoop::RunLines(qint16 &start, qint16 &end)
{
    pass(start, end, Level::Run);
}

RunLoop::Outcome RunLoop::pass(qint16 start, qint16 &end, Level level)
{
    const int last = end;
    m_extraLineDelay = 0;
    if (start - 1 == last)
        m_state.vardict.removeAll();

    CurrentLine line;
    for (int index = start; index <= last; ++index) {
        if (const Outcome outcome = execute(index, line); outcome != Outcome::ReachedEnd)
            return outcome;
        if (level == Level::Run && index == end) {
            m_state.vardict.removeAll();
            if (m_state.endsWithRun()) {
                m_processEnded = true;
                m_launcher.endProcess();
                return Outcome::ProcessEnded;
            }
        }
    }
    return Outcome::ReachedEnd;
}

RunLoop::Outcome RunLoop::execute(int index, CurrentLine &line)
{
    const QString text = m_state.runlist.value(index);
    if (text.isEmpty() || text.startsWith("//"_L1))
        return Outcome::ReachedEnd;
    line.parse(text);
    // What a line takes from the line before it does under that one's limit, if that had one.
    if (line.isWhole || !line.limit)
        line.limit = m_state.runlistLimit;
    m_state.currentLine = index;
    try {
        return m_state.observer ? observed(index, line) : carryOut(index, line);
    } catch (RunTimeError &error) {
        if (!error.line())
            error.setLine(index);
        throw;
    } catch (RunStopped &stopped) {
        stopped.setPlace({.keyword = m_state.currentKeyword, .line = index});
        throw;
    }
}

RunLoop::Outcome RunLoop::observed(int index, CurrentLine &line)
{
    using LineEnd = RunObserver::LineEnd;
    RunObserver &observer = *m_state.observer;
    ListView view(m_state, m_reader, line.limit, index);
    if (observer.holdsRuns())
        observer.standsBefore(view);
    observer.lineBegins({m_state.currentKeyword, {}, index + 1, m_state.runlist.value(index)});
    try {
        const Outcome outcome = carryOut(index, line);
        observer.lineEnds(outcome == Outcome::Suspended ? LineEnd::Rests : LineEnd::Done, {});
        return outcome;
    } catch (const RunTimeError &error) {
        observer.lineEnds(LineEnd::Failed, error.description());
        // A line around the one that has failed fails with it.
        if (!error.line() && observer.holdsRuns())
            observer.hasFailed(view, error.description(), false);
        throw;
    } catch (const RunStopped &) {
        observer.lineEnds(LineEnd::Stopped, {});
        throw;
    }
}

RunLoop::Outcome RunLoop::carryOut(int index, CurrentLine &line)
{
    m_waiter.Wait(linePause);
    if (m_extraLineDelay != 0)
        m_waiter.Wait(static_cast<double>(m_extraLineDelay));
    // A run that was started inside the wait may have been the last.
    if (m_processEnded)
        return Outcome::ProcessEnded;
    if (m_state.limit != line.limit)
        m_state.limit = line.limit;
    const Outcome outcome = dispatch(index, line);
    return m_processEnded ? Outcome::ProcessEnded : outcome;
}

void RunLoop::CurrentLine::parse(const QString &text)
{
    QString head = text;
    if (const qsizetype blank = text.indexOf(u' '); blank >= 1) {
        head = text.first(blank);
        arguments = text.sliced(blank + 1);
    }
    const qsizetype dot = head.indexOf(u'.');
    isWhole = head.size() < text.size() && dot >= 0;
    if (dot < 0) {
        nameSpace = head;
    } else {
        nameSpace = head.first(dot);
        const qsizetype secondDot = head.indexOf(u'.', dot + 1);
        command = head.sliced(dot + 1, (secondDot < 0 ? head.size() : secondDot) - dot - 1);
    }
    arguments.replace(commaEscape, commaPlaceholder);
}

std::span<const RunLoop::OwnRow> RunLoop::ownTable()
{
    static constexpr std::array rows{
        OwnRow{{u"start", {{{u"mode", FieldKind::Choice}, {u"count", FieldKind::Number}}},
                   u"The lines up to while.end run count times, with mode count.", Touches::Nothing,
                   Editions::One},
            &RunLoop::startBody},
        OwnRow{{u"end", {}, u"Ends the lines that are repeated.", Touches::Nothing, Editions::One},
            &RunLoop::endBody},
    };
    return rows;
}

QList<CommandInfo> RunLoop::ownCommands()
{
    QList<CommandInfo> infos;
    for (const OwnRow &row : ownTable())
        infos += row.info;
    return infos;
}

RunLoop::Outcome RunLoop::dispatch(int index, CurrentLine &line)
{
    if (line.nameSpace == ownNamespace) {
        for (const OwnRow &row : ownTable()) {
            if (row.info.word == line.command)
                return (this->*row.routine)(index, line);
        }
        return Outcome::ReachedEnd;
    }

    Handler *handler = m_handlers.value(line.nameSpace);
    if (!handler
        || handler->call(CommandCall(m_reader, line.command, line.arguments, m_state.observer)) == Next::GoOn)
        return Outcome::ReachedEnd;
    m_state.runidx[0] = toInt16(index + 1.0);
    return Outcome::Suspended;
}

RunLoop::Outcome RunLoop::startBody(int index, CurrentLine &line)
{
    m_state.runidx[0] = toInt16(index + 1.0);
    line.whileArguments = line.arguments;
    return Outcome::ReachedEnd;
}

RunLoop::Outcome RunLoop::endBody(int index, CurrentLine &line)
{
    const qint16 endBefore = m_state.runidx[1];
    m_state.runidx[1] = toInt16(index - 1.0);
    if (m_reader.GetArg(line.whileArguments, u","_s, 0, UnknownVariable::IsItsName) == "count"_L1)
        return repeatBody(line.whileArguments);
    m_state.runidx[1] = endBefore;
    return Outcome::ReachedEnd;
}

// The body has run once already, in the order of the lines. A loop inside the body leaves its own bounds in
// `runidx`, so only single-level loops repeat what one expects; kept, scripts rely on it.
RunLoop::Outcome RunLoop::repeatBody(const QString &arguments)
{
    const double count = toDouble(m_reader.GetArg(arguments, u","_s, 1, UnknownVariable::IsItsName));
    if (count > 0) {
        const int lastRepetition = toInt16(count - 2);
        for (int repetition = 0; repetition <= lastRepetition; ++repetition) {
            const Outcome outcome = pass(m_state.runidx[0], m_state.runidx[1], Level::Repetition);
            if (outcome != Outcome::ReachedEnd)
                return outcome;
        }
    }
    m_state.runidx[0] = toInt16(m_state.runidx[1] + 1.0);
    m_state.runidx[1] = toInt16(static_cast<double>(m_state.runlist.size()) - 1);
    return Outcome::ReachedEnd;
}

} // namespace plum
