#pragma once

#include "engine/script_vocabulary.h"

#include <QStringList>

namespace plum {

// The row of a command in edition 1; null when there is none. A row whose word is empty stands for every
// word, one whose word ends in "_" for every word that begins so.
const CommandInfo *firstEditionRow(
    const ScriptVocabulary &vocabulary, const QString &nameSpace, const QString &word);

// The words of a namespace and the namespaces of an edition, for "did you mean".
QStringList wordsOf(const ScriptVocabulary &vocabulary, const QString &nameSpace, Edition edition);
QStringList namespacesOf(const ScriptVocabulary &vocabulary, Edition edition);

} // namespace plum
