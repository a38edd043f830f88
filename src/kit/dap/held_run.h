#pragma once

#include "engine/script_vocabulary.h"
#include "kit/dap/request_arguments.h"
#include "kit/dap/source_breakpoints.h"
#include "stepping/run_control.h"

namespace plum::kit {

// What a debugger asks of a run while it is held. What is not there raises a RequestProblem.
class HeldRun
{
public:
    // How the editor counts; the protocol lets it choose.
    struct Counting
    {
        int firstLine = 1;
        int firstColumn = 1;
    };

    HeldRun(const RunControl::Hold &hold, const ScriptVocabulary &vocabulary,
        const SourceBreakpoints &sources, Counting counting)
        : m_hold(hold)
        , m_run(hold.run)
        , m_vocabulary(vocabulary)
        , m_sources(sources)
        , m_counting(counting)
    {
    }

    QJsonObject stackTrace(const RequestArguments &arguments) const;
    QJsonObject scopes(const RequestArguments &arguments) const;
    QJsonObject variables(const RequestArguments &arguments) const;
    QJsonObject setVariable(const RequestArguments &arguments) const;
    QJsonObject evaluate(const RequestArguments &arguments) const;
    QJsonObject exceptionInfo() const;

private:
    enum class Scope {
        Variables,
        Line, // its arguments
    };

    int frameFrom(const RequestArguments &arguments, int fallback) const;
    std::pair<int, Scope> scopeFrom(const RequestArguments &arguments) const;
    QJsonArray valuesOf(int frame, Scope scope) const;

    const RunControl::Hold &m_hold;
    RunView &m_run;
    const ScriptVocabulary &m_vocabulary;
    const SourceBreakpoints &m_sources;
    Counting m_counting;
};

} // namespace plum::kit
