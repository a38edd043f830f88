#include "engine/script_vocabulary.h"

#include <algorithm>
#include <array>

namespace plum {

namespace {

// What the run loop does by itself.
constexpr std::array<QStringView, 4> loopHeads{u"while.start", u"while.end", u"input.text", u"me.text_input"};

} // namespace

void ScriptVocabulary::add(const QString &nameSpace, const QList<CommandInfo> &commands)
{
    m_tables[nameSpace] += commands;
}

bool ScriptVocabulary::knows(QStringView head) const
{
    if (std::ranges::find(loopHeads, head) != loopHeads.end())
        return true;
    const qsizetype dot = head.indexOf(u'.');
    if (dot < 0)
        return false;
    const auto table = m_tables.constFind(head.first(dot).toString());
    const QStringView word = head.sliced(dot + 1);
    return table != m_tables.constEnd() && std::ranges::any_of(*table, [word](const CommandInfo &info) {
        return info.word.isEmpty() || info.word == word
            || (info.word.endsWith(u'_') && word.startsWith(info.word));
    });
}

} // namespace plum
