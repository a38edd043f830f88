#include "check/findings/words.h"

namespace plum {

const CommandInfo *firstEditionRow(
    const ScriptVocabulary &vocabulary, const QString &nameSpace, const QString &word)
{
    const auto table = vocabulary.tables().constFind(nameSpace);
    if (table == vocabulary.tables().constEnd())
        return nullptr;
    for (const CommandInfo &info : *table) {
        if (info.existsIn(Edition::One)
            && (info.word.isEmpty() || info.word == word
                || (info.word.endsWith(u'_') && QStringView(word).startsWith(info.word))))
            return &info;
    }
    return nullptr;
}

QStringList wordsOf(const ScriptVocabulary &vocabulary, const QString &nameSpace, Edition edition)
{
    QStringList words;
    for (const CommandInfo &info : vocabulary.tables().value(nameSpace)) {
        if (info.existsIn(edition) && !info.word.isEmpty())
            words += info.word.toString();
    }
    return words;
}

QStringList namespacesOf(const ScriptVocabulary &vocabulary, Edition edition)
{
    QStringList names;
    for (auto it = vocabulary.tables().constBegin(); it != vocabulary.tables().constEnd(); ++it) {
        if (vocabulary.hasNamespace(it.key(), edition))
            names += it.key();
    }
    names.sort();
    return names;
}

} // namespace plum
