#pragma once

#include "check/edition1/argument_pieces.h"
#include "check/findings/variable_use.h"

namespace plum::edition1 {

// Judges how the arguments of a line are written, whatever they are for: quotes, blanks, references,
// templates.
class WritingRules
{
public:
    WritingRules(Report &report, VariableUse &variables)
        : m_report(report)
        , m_variables(variables)
    {
    }

    // The values as they were most likely meant: without the blanks around them, and with the pieces of one
    // quoted text that a separator splits as one broken value again.
    QList<Value> judge(int line, const QList<Value> &written);

    // All references that a value holds are read.
    void judgeReference(int line, const Value &value);

private:
    QList<Value> judgeQuotes(int line, const QList<Value> &written);
    void judgeBlanks(int line, Value &value);
    void judgeWriting(int line, const Value &value);
    void judgeTemplate(int line, const Value &value);
    void judgeBareText(int line, const Value &value);
    void judgeQuotedText(int line, const Value &value);

    Report &m_report;
    VariableUse &m_variables;
};

} // namespace plum::edition1
