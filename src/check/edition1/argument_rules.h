#pragma once

#include "check/edition1/field_rules.h"
#include "check/edition1/key_rules.h"
#include "check/edition1/writing_rules.h"

namespace plum::edition1 {

// Judges the arguments of one line after the other: how they are written, how many they are, and whether they
// fit their fields.
class ArgumentRules
{
public:
    ArgumentRules(Report &report, VariableUse &variables, const AppFiles &files)
        : m_report(report)
        , m_variables(variables)
        , m_writing(report, variables)
        , m_fields(report, variables, files)
    {
    }

    void judge(const ScriptLine &line, const CommandInfo &info, const CommandTraits &traits);

    // A line that sets the variable named after the dot.
    void judgeAssignment(const ScriptLine &line);

    // The arguments of while.start.
    QList<Value> judgeWriting(const ScriptLine &line, const QList<Value> &values)
    {
        return m_writing.judge(line.number, values);
    }
    std::optional<QString> knownText(const Value &value, int line) const
    {
        return m_fields.knownText(value, line);
    }

private:
    QList<Value> valuesOf(const CalledCommand &command);
    void judgeRaw(const ScriptLine &line);
    void takeFieldsOfChoice(CalledCommand &command, const QList<Value> &values) const;
    void takeVariables(const CalledCommand &command, const QList<Value> &values);
    void judgeCount(const CalledCommand &command, const QList<Value> &values);
    void judgeMissing(const CalledCommand &command, const QList<Value> &values);

    Report &m_report;
    VariableUse &m_variables;
    WritingRules m_writing;
    FieldRules m_fields;
};

} // namespace plum::edition1
