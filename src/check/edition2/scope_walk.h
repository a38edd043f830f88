#pragma once

#include "check/findings/app_files.h"
#include "check/findings/variable_use.h"
#include "engine/edition2/fields.h"
#include "engine/script_vocabulary.h"

namespace plum::edition2 {

// Walks a tree and judges what its lines read and set. The script's own lines are one scope, each part is
// another.
class ScopeWalk
{
public:
    ScopeWalk(const ScriptVocabulary &vocabulary, const AppFiles &files, Report &report)
        : m_vocabulary(vocabulary)
        , m_files(files)
        , m_report(report)
    {
    }

    void walk(const Tree &tree);

private:
    void walkScope(const std::vector<Statement> &statements);
    void walk(const Statement &statement);
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
    Report &m_report;
    VariableUse m_variables;
};

} // namespace plum::edition2
