#include "check/findings/nearest_word.h"

#include "check/findings/check_words.h"

#include <algorithm>
#include <vector>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

int distance(QStringView a, QStringView b)
{
    const qsizetype width = b.size() + 1;
    std::vector<int> cells(static_cast<std::size_t>((a.size() + 1) * width));
    const auto at = [&](qsizetype row, qsizetype column) -> int & {
        return cells[static_cast<std::size_t>(row * width + column)];
    };
    for (qsizetype row = 0; row <= a.size(); ++row) {
        for (qsizetype column = 0; column <= b.size(); ++column) {
            if (row == 0 || column == 0) {
                at(row, column) = static_cast<int>(row + column);
                continue;
            }
            const bool isSame = a[row - 1] == b[column - 1];
            int least = std::min({at(row - 1, column) + 1, at(row, column - 1) + 1,
                at(row - 1, column - 1) + (isSame ? 0 : 1)});
            if (row > 1 && column > 1 && a[row - 1] == b[column - 2] && a[row - 2] == b[column - 1])
                least = std::min(least, at(row - 2, column - 2) + 1);
            at(row, column) = least;
        }
    }
    return at(a.size(), b.size());
}

} // namespace

QString nearestWord(const QString &word, const QStringList &known)
{
    QString nearest;
    qsizetype best = std::max<qsizetype>(1, word.size() / 3) + 1;
    for (const QString &candidate : known) {
        if (candidate.compare(word, Qt::CaseInsensitive) == 0)
            return candidate;
        if (std::abs(candidate.size() - word.size()) >= best)
            continue;
        if (const int away = distance(word, candidate); away < best) {
            best = away;
            nearest = candidate;
        }
    }
    return nearest;
}

QString didYouMean(const QString &word, const QStringList &known, const QString &before)
{
    const QString nearest = nearestWord(word, known);
    return nearest.isEmpty() ? QString() : CheckWords::tr(" Did you mean \"%1%2\"?").arg(before, nearest);
}

} // namespace plum
