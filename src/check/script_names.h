#pragma once

#include "check/findings/finding.h"
#include "check/findings/name_use.h"
#include "engine/command_call.h"

#include <QStringList>

namespace plum {

// The variables and parts of one script by their exact places, for going to them and for renaming them. All
// lines and columns count from 1.
class ScriptNames
{
public:
    // `lines` are those that the script was checked by.
    ScriptNames(const NameUses &names, const QStringList &lines);

    // What is named at a place; the place just behind a name belongs to it. Null where nothing is.
    const NameUse *at(int line, int column) const;

    // All places of the same variable or part, in their order.
    QList<NameUse> sameAs(const NameUse &use) const;

    // All places, in their order.
    const QList<NameUse> &all() const { return m_uses; }

    // Why the name cannot become `newName` everywhere, as a sentence; empty when it can.
    QString obstacle(
        const NameUse &use, const QString &newName, Edition edition, const Findings &findings) const;

private:
    QString unreadLine(const NameUse &use, const Findings &findings) const;

    QList<NameUse> m_uses;
    QList<NameUse> m_hidden; // places where a line means a name that is not written there
    bool m_areAllKnown;
    QStringList m_lines;
};

} // namespace plum
