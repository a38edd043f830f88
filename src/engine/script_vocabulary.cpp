#include "engine/script_vocabulary.h"

#include <algorithm>

namespace plum {

namespace {

bool isNumber(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isMeant(const CommandInfo &info, QStringView word)
{
    return info.word.isEmpty() || info.word == word
        || (info.word.endsWith(u'_') && word.startsWith(info.word)
            && isNumber(word.sliced(info.word.size())));
}

} // namespace

void ScriptVocabulary::add(const QString &nameSpace, const QList<CommandInfo> &commands)
{
    m_tables[nameSpace] += commands;
}

bool ScriptVocabulary::knows(QStringView head) const
{
    const qsizetype dot = head.indexOf(u'.');
    if (dot < 0)
        return false;
    const auto table = m_tables.constFind(head.first(dot).toString());
    const QStringView word = head.sliced(dot + 1);
    return table != m_tables.constEnd() && std::ranges::any_of(*table, [word](const CommandInfo &info) {
        return info.existsIn(Edition::One)
            && (info.word.isEmpty() || info.word == word
                || (info.word.endsWith(u'_') && word.startsWith(info.word)));
    });
}

bool ScriptVocabulary::hasNamespace(QStringView nameSpace, Edition edition) const
{
    const auto table = m_tables.constFind(nameSpace.toString());
    return table != m_tables.constEnd()
        && std::ranges::any_of(*table, [edition](const CommandInfo &info) { return info.existsIn(edition); });
}

const CommandInfo *ScriptVocabulary::find(QStringView nameSpace, QStringView word) const
{
    const auto table = m_tables.constFind(nameSpace.toString());
    if (table == m_tables.constEnd())
        return nullptr;
    const auto info = std::ranges::find_if(
        *table, [word](const CommandInfo &row) { return row.existsIn(Edition::Two) && isMeant(row, word); });
    return info == table->constEnd() ? nullptr : &*info;
}

} // namespace plum
