#pragma once

#include "check/script_names.h"
#include "engine/script_vocabulary.h"

namespace plum {

// What a script consists of, for a person who looks for a place in it: parts, blocks, and each variable where
// it is first set. Lines and columns count from 1.
struct OutlineItem
{
    enum class Kind {
        Part,
        Block,
        Variable,
    };

    Kind kind = Kind::Block;
    QString name;
    int firstLine = 1;
    int lastLine = 1;
    int column = 1; // of the name, in the first line
    QList<OutlineItem> children = {};
};

QList<OutlineItem> outlineOf(const QString &script, const QStringList &lines, Edition edition,
    const ScriptNames &names, const ScriptVocabulary &vocabulary);

} // namespace plum
