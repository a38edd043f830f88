#pragma once

#include "check/edition2/edition2_check.h"
#include "check/findings/variable_use.h"
#include "engine/edition2/fields.h"
#include "engine/script_vocabulary.h"

namespace plum::edition2 {

// Walks a tree and judges what its lines read and set. The script's own lines are one scope, each part is
// another. The tree says where lines stand; what stands in them is in their records.
class ScopeWalk
{
public:
    using Records = std::vector<std::unique_ptr<LineRecord>>;

    ScopeWalk(const ScriptVocabulary &vocabulary, const AppFiles &files, NameTable &names,
        const Records &records, Report &report)
        : m_vocabulary(vocabulary)
        , m_files(files)
        , m_records(records)
        , m_report(report)
        , m_variables(names)
    {
    }

    void walk(const Tree &tree);

private:
    void finishScope();
    void walk(const Statement &statement);
    void take(const Line &place);
    void addPart(const Line &line);
    void judge(const Line &line);
    void judgeAssignment(const Line &line);
    void judgeValue(const Line &line, const BoundValue &bound);
    void judgeForgottenMark(const Line &line, const Value &value);
    void judgeExpression(const Line &line, const Value &value, const QString &text);
    void judgeText(const Line &line, const Field &field, const Value &value, const QString &text);
    void setVariable(const Line &line, const Value &value);
    void readNames(const Line &line, const Value &value);

    const ScriptVocabulary &m_vocabulary;
    const AppFiles &m_files;
    const Records &m_records; // of all lines
    Report &m_report;
    VariableUse m_variables;
};

} // namespace plum::edition2
