#pragma once

#include "engine/command_table.h"

#include <QHash>
#include <QList>
#include <QString>

namespace plum {

// The words of the script language, for the editor: every namespace with its table.
class ScriptVocabulary
{
public:
    void add(const QString &nameSpace, const QList<CommandInfo> &commands);

    // Whether a script line may begin with `head`, "namespace.command". A table's word that ends in "_"
    // stands for every word that begins so, an empty one for any word.
    bool knows(QStringView head) const;

private:
    QHash<QString, QList<CommandInfo>> m_tables;
};

} // namespace plum
