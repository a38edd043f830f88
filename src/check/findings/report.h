#pragma once

#include "check/findings/finding.h"
#include "check/findings/name_use.h"

namespace plum {

// Collects what is found in one script: what is wrong, and where it names variables.
class Report
{
public:
    // With the rule's own severity.
    void add(int line, int column, QStringView rule, const QString &message);
    void add(int line, int column, QStringView rule, Severity severity, const QString &message);
    void add(const Findings &findings) { m_findings += findings; }

    // By place, each once; suppressed ones are left out.
    Findings sorted() const;

    // Whether something may be wrong: a warning or an error that is not suppressed.
    bool hasMoreThanHints() const;

    // `rule` is not looked at in `line`.
    void suppress(int line, const QString &rule);

    // Where names stand, for those who look for them. Each scope has variables of its own.
    int beginScope() { return m_names.scopes++; }
    void addName(const NameUse &use) { m_names.uses += use; }
    // Some line names its variable by a value.
    void addUnknownName() { m_names.areAllKnown = false; }
    const NameUses &names() const { return m_names; }

private:
    bool isSuppressed(const Finding &finding) const;

    Findings m_findings;
    NameUses m_names;
    QList<std::pair<int, QString>> m_suppressed;
};

// A reason as a sentence: with a capital letter and a full stop.
QString asSentence(const QString &reason);

} // namespace plum
