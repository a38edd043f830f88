#pragma once

#include "check/findings/app_files.h"
#include "check/edition1/command_traits.h"
#include "check/edition1/script_line.h"
#include "check/findings/variable_use.h"
#include "engine/command_table.h"

namespace plum::edition1 {

// Judges the arguments of one line after the other: how they are written, and whether they fit their fields.
class ArgumentRules
{
public:
    ArgumentRules(Report &report, VariableUse &variables, const AppFiles &files)
        : m_report(report)
        , m_variables(variables)
        , m_files(files)
    {
    }

    void judge(const ScriptLine &line, const CommandInfo &info, const CommandTraits &traits);

    // A line that sets the variable named after the dot.
    void judgeAssignment(const ScriptLine &line);

private:
    struct Command
    {
        const ScriptLine &line;
        const CommandInfo &info;
        CommandTraits traits;
        QList<Field> fields; // with those that a choice brings along
    };

    QList<Value> valuesOf(const Command &command);
    void judgeColon(const ScriptLine &line);
    void judgeQuotes(int line, const QList<Value> &values, QList<bool> &isJudged);
    void judgeWriting(int line, const Value &value, bool isSeparated);
    void judgeReference(int line, const Value &value);
    void judgeTemplate(int line, const Value &value);
    void judgeKeys(const Command &command, const QList<Value> &values);
    void judgeCount(const Command &command, const QList<Value> &values);
    void judgeField(const Command &command, const Field &field, const Value &value, bool answersForAll);
    void judgeText(const Command &command, const Field &field, const Value &value, const QString &text);
    void judgeChoice(const Command &command, const Field &field, const Value &value, const QString &text);
    void judgeVariable(const Command &command, const Field &field, const Value &value);
    void judgeNothing(const Command &command, const Field &field, const Value &value);

    Report &m_report;
    VariableUse &m_variables;
    const AppFiles &m_files;
};

} // namespace plum::edition1
