#include "check/edition1/loop_rules.h"

#include "engine/conversions.h"
#include "engine/run_time_error.h"

namespace plum::edition1 {

using namespace Qt::StringLiterals;

void LoopRules::start(const ScriptLine &line)
{
    if (!m_open.isEmpty())
        m_report.add(line.number, 1, u"nested-loop",
            u"This loop lies inside the one of line %1; behind it, the outer one repeats the wrong lines."_s.arg(
                m_open.back().number));
    m_open += line;
    m_executedAtStart = m_executed;
    judgeCount(line);
}

void LoopRules::judgeCount(const ScriptLine &line)
{
    if (!line.arguments) {
        m_report.add(line.number, 1, u"missing-arguments",
            u"while.start wants \"count\" and a number; nothing is repeated as it stands."_s);
        return;
    }
    const QList<Value> values = line.arguments->values(u',');
    const Value &mode = values.front();
    if (mode.kind == Value::Kind::Nothing || (mode.isLiteral() && mode.text != "count"_L1)) {
        m_report.add(line.number, mode.column, u"no-effect",
            u"Only \"count\" repeats; with %1 the lines run once."_s.arg(mode.written));
        return;
    }
    if (values.size() < 2) {
        m_report.add(line.number, mode.column, u"missing-arguments", u"The number of repetitions is missing."_s);
        return;
    }
    const Value &count = values[1];
    if (count.kind != Value::Kind::Nothing && !count.isLiteral())
        return;
    try {
        toDouble(count.kind == Value::Kind::Nothing ? QString() : count.text);
    } catch (const RunTimeError &) {
        m_report.add(line.number, count.column, u"wrong-value",
            count.kind == Value::Kind::Nothing
                ? u"%1 without quotes is nothing, and no number of repetitions."_s.arg(count.written)
                : u"\"%1\" is not a number of repetitions."_s.arg(count.text));
    }
}

void LoopRules::end(const ScriptLine &line)
{
    if (m_open.isEmpty()) {
        m_report.add(line.number, 1, u"loop-without-start",
            u"No while.start stands above this while.end; it repeats nothing."_s);
        return;
    }
    const ScriptLine begun = m_open.takeLast();
    m_variables.addLoop(begun.number, line.number);
    if (m_executed == m_executedAtStart)
        m_report.add(begun.number, 1, u"empty-loop",
            u"Nothing stands in this loop; each repetition forgets all variables."_s);
}

void LoopRules::suspension(const ScriptLine &line)
{
    if (!m_open.isEmpty())
        m_report.add(line.number, 1, u"question-in-loop",
            u"After the answer the script goes on to its last line; the loop of line %1 repeats no more."_s.arg(
                m_open.back().number));
}

void LoopRules::finish()
{
    for (const ScriptLine &open : std::as_const(m_open))
        m_report.add(open.number, 1, u"loop-without-end",
            u"No while.end closes this while.start; nothing is repeated."_s);
}

} // namespace plum::edition1
