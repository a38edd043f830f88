#pragma once

#include "check/edition1/argument_pieces.h"
#include "check/edition1/command_traits.h"
#include "check/edition1/script_line.h"
#include "check/findings/app_files.h"
#include "check/findings/variable_use.h"
#include "engine/command_table.h"

namespace plum::edition1 {

// A line and the row of the table that it calls.
struct CalledCommand
{
    const ScriptLine &line;
    const CommandInfo &info;
    CommandTraits traits;
    QList<Field> fields; // with those that a choice brings along
};

// Judges whether a value fits its field, as far as the value is known before the run.
class FieldRules
{
public:
    FieldRules(Report &report, VariableUse &variables, const AppFiles &files)
        : m_report(report)
        , m_variables(variables)
        , m_files(files)
    {
    }

    void judge(const CalledCommand &command, const Field &field, const Value &value);

    // The text that a value is certainly going to be.
    std::optional<QString> knownText(const Value &value, int line) const;

    // The region that the command's picture is searched in, if the line says so.
    void setRegion(std::optional<QString> region) { m_region = std::move(region); }

private:
    void judgeNothing(const CalledCommand &command, const Field &field, const Value &value);
    void judgeText(const CalledCommand &command, const Field &field, const Value &value, const QString &text);
    void judgeEmpty(const CalledCommand &command, const Field &field, const Value &value);
    void judgeChoice(
        const CalledCommand &command, const Field &field, const Value &value, const QString &text);
    void judgeAction(
        const CalledCommand &command, const Field &field, const Value &value, const QString &text);
    void judgeVariable(const CalledCommand &command, const Value &value);

    Report &m_report;
    VariableUse &m_variables;
    const AppFiles &m_files;
    std::optional<QString> m_region;
};

} // namespace plum::edition1
