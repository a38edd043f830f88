#pragma once

#include "check/script_check.h"
#include "check/script_words.h"

namespace plum {

// What would mend a finding. Each was tried: with it the finding is gone, and no other comes in its place.
struct QuickFix
{
    QString title; // for people
    int line = 1; // the line that changes, from 1; 0: the whole script
    QString text; // what stands there then
    bool isSuppression = false; // the finding is silenced, and nothing mended
};

class QuickFixes
{
public:
    QuickFixes(const ScriptCheck &check, const ScriptWords &words)
        : m_check(check)
        , m_words(words)
    {
    }

    // The fixes of one of the `findings` of a script, the best first. `lines` are those that it was checked
    // by.
    QList<QuickFix> of(const Finding &finding, const Findings &findings, const QString &script,
        const QStringList &lines, Edition edition, const QString &folder) const;

private:
    QList<QuickFix> candidates(
        const Finding &finding, const QString &script, const QStringList &lines, Edition edition) const;
    QList<QuickFix> nearWords(const Finding &finding, const QStringList &lines, Edition edition) const;

    const ScriptCheck &m_check;
    const ScriptWords &m_words;
};

} // namespace plum
