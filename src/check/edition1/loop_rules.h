#pragma once

#include "check/edition1/argument_rules.h"
#include "check/findings/variable_use.h"

namespace plum::edition1 {

// Follows the loops of a script: `while.start` and `while.end`, and what does not go well inside them.
class LoopRules
{
public:
    LoopRules(Report &report, VariableUse &variables, ArgumentRules &arguments)
        : m_report(report)
        , m_variables(variables)
        , m_arguments(arguments)
    {
    }

    void start(const ScriptLine &line);
    void end(const ScriptLine &line);

    // A line that leaves the run until somebody answers.
    void suspension(const ScriptLine &line);

    // Any line that is executed.
    void executed() { ++m_executed; }

    // After the last line.
    void finish();

private:
    void judgeArguments(const ScriptLine &line);
    void judgeCount(const ScriptLine &line, const Value &count);

    Report &m_report;
    VariableUse &m_variables;
    ArgumentRules &m_arguments;
    QList<ScriptLine> m_open;
    int m_executed = 0;
    int m_executedAtStart = 0;
};

} // namespace plum::edition1
