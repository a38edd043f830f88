#pragma once

#include <QString>
#include <QStringList>

namespace plum {

// The word of `known` that somebody who wrote `word` most likely meant: another letter case of it, else the
// one that is fewest insertions, deletions, replacements and swaps of neighbours away (optimal string
// alignment distance), a third of its length at most. Empty when none is near.
QString nearestWord(const QString &word, const QStringList &known);

// " Did you mean X?" for the word that is near, else nothing.
QString didYouMean(const QString &word, const QStringList &known, const QString &before = {});

} // namespace plum
