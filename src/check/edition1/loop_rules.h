#pragma once

#include "check/edition1/script_line.h"
#include "check/findings/variable_use.h"

namespace plum::edition1 {

// Follows the loops of a script: `while.start` and `while.end`, and what does not go well inside them.
class LoopRules
{
public:
    LoopRules(Report &report, VariableUse &variables)
        : m_report(report)
        , m_variables(variables)
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
    void judgeCount(const ScriptLine &line);

    Report &m_report;
    VariableUse &m_variables;
    QList<ScriptLine> m_open;
    int m_executed = 0;
    int m_executedAtStart = 0;
};

} // namespace plum::edition1
