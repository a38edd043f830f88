#include "check/edition1/loop_rules.h"

#include "check/findings/check_words.h"
#include "engine/conversions.h"
#include "engine/run_time_error.h"

namespace plum::edition1 {

using namespace Qt::StringLiterals;

void LoopRules::start(const ScriptLine &line)
{
    if (!m_open.isEmpty())
        m_report.add(line.number, 1, u"nested-loop",
            CheckWords::tr(
                "This loop lies inside the one of line %1; behind it, the outer one repeats the wrong lines.")
                .arg(m_open.back().number));
    m_open += line;
    m_executedAtStart = m_executed;
    judgeArguments(line);
}

void LoopRules::judgeArguments(const ScriptLine &line)
{
    if (!line.arguments) {
        m_report.add(line.number, 1, u"missing-arguments",
            CheckWords::tr("while.start wants \"count\" and a number; nothing is repeated as it stands."));
        return;
    }
    const QList<Value> values = m_arguments.judgeWriting(line, line.arguments->values(u','));
    const Value &mode = values.front();
    const std::optional<QString> word = m_arguments.knownText(mode, line.number);
    if (word && *word != "count"_L1) {
        m_report.add(line.number, mode.column, u"no-effect",
            CheckWords::tr("Only \"count\" repeats; with %1 the lines run once.").arg(mode.written));
        return;
    }
    if (values.size() < 2)
        m_report.add(line.number, mode.column, u"missing-arguments",
            CheckWords::tr("The number of repetitions is missing."));
    else
        judgeCount(line, values[1]);
    if (values.size() > 2)
        m_report.add(line.number, values[2].column, u"surplus-arguments",
            CheckWords::tr("while.start takes 2 arguments; this one is ignored."));
}

void LoopRules::judgeCount(const ScriptLine &line, const Value &count)
{
    const std::optional<QString> text = m_arguments.knownText(count, line.number);
    if (!text)
        return;
    double number = 0;
    try {
        number = toDouble(*text);
        if (number > 0)
            toInt16(number - 2);
    } catch (const RunTimeError &error) {
        if (error.number() == RunTimeError::Overflow)
            m_report.add(line.number, count.column, u"number-range",
                CheckWords::tr("A loop repeats 32769 times at most, not %1.").arg(*text));
        else if (count.kind == Value::Kind::Nothing)
            m_report.add(line.number, count.column, u"wrong-value",
                CheckWords::tr("%1 without quotes is nothing, and no number of repetitions.")
                    .arg(count.written));
        else
            m_report.add(line.number, count.column, u"wrong-value",
                CheckWords::tr("\"%1\" is not a number of repetitions.").arg(*text));
        return;
    }
    if (number < 1)
        m_report.add(line.number, count.column, u"odd-value",
            CheckWords::tr("The lines run once even with a count of %1.").arg(*text));
}

void LoopRules::end(const ScriptLine &line)
{
    if (m_open.isEmpty()) {
        m_report.add(line.number, 1, u"loop-without-start",
            CheckWords::tr("No while.start stands above this while.end; it repeats nothing."));
        return;
    }
    const ScriptLine begun = m_open.takeLast();
    m_variables.addLoop(begun.number, line.number);
    if (m_executed == m_executedAtStart)
        m_report.add(begun.number, 1, u"empty-loop",
            CheckWords::tr("Nothing stands in this loop; each repetition forgets all variables."));
}

void LoopRules::suspension(const ScriptLine &line)
{
    if (!m_open.isEmpty())
        m_report.add(line.number, 1, u"question-in-loop",
            CheckWords::tr(
                "After the answer the script goes on to its last line; the loop of line %1 repeats no more.")
                .arg(m_open.back().number));
}

void LoopRules::finish()
{
    for (const ScriptLine &open : std::as_const(m_open))
        m_report.add(open.number, 1, u"loop-without-end",
            CheckWords::tr("No while.end closes this while.start; nothing is repeated."));
}

} // namespace plum::edition1
