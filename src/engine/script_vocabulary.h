#pragma once

#include "engine/command_table.h"

#include <QHash>
#include <QList>
#include <QString>

namespace plum {

// The words of the script language, for the editor and the parser: every namespace with its table.
class ScriptVocabulary
{
public:
    void add(const QString &nameSpace, const QList<CommandInfo> &commands);

    // Whether a line of edition 1 may begin with `head`, "namespace.command". A table's word that ends in "_"
    // stands for every word that begins so, an empty one for any word.
    bool knows(QStringView head) const;

    bool hasNamespace(QStringView nameSpace, Edition edition) const;

    // The row of a command in edition 2, where the part of a word behind "_" is a number; null when there is
    // none.
    const CommandInfo *find(QStringView nameSpace, QStringView word) const;

    const QHash<QString, QList<CommandInfo>> &tables() const { return m_tables; }

private:
    QHash<QString, QList<CommandInfo>> m_tables;
};

} // namespace plum
