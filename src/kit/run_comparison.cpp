#include "kit/run_comparison.h"

#include "flight/flight_log.h"
#include "flight/secrets.h"

#include <algorithm>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

using Entries = std::deque<FlightEntry>;

// What was left out of a record may have been anything.
bool mayBeTheSame(const QString &a, const QString &b)
{
    return a == b || a.contains(Secrets::mark) || b.contains(Secrets::mark);
}

bool isSameLine(const FlightEntry &a, const FlightEntry &b)
{
    return a.line.text.trimmed() == b.line.text.trimmed();
}

// Without what depends on how fast the desktop was: a line that waits looks over and over, and what it saw
// last counts.
QList<FlightDeed> deedsThatCount(const FlightEntry &entry)
{
    QList<FlightDeed> deeds;
    qsizetype search = -1;
    for (const FlightEntry::Deed &deed : entry.deeds) {
        if (deed.what.isOfMiss() || deed.what.kind == FlightDeed::Kind::StopAsked)
            continue;
        if (deed.what.isOfSearch() && search >= 0)
            deeds.removeAt(search);
        if (deed.what.isOfSearch())
            search = deeds.size();
        deeds += deed.what;
    }
    return deeds;
}

// Why a line failed is a sentence in the language of its session; that it did counts.
RunObserver::LineEnd endThatCounts(const FlightEntry &entry)
{
    using enum RunObserver::LineEnd;
    return entry.end == Failed || entry.end == Stopped ? *entry.end : Done;
}

} // namespace

QStringList outcomeOf(const FlightEntry &entry)
{
    QStringList outcome;
    if (!entry.fields.isEmpty())
        outcome += entry.fields.join(u", "_s);
    for (const FlightDeed &deed : deedsThatCount(entry))
        outcome += deed.toText();
    for (const auto &[name, value] : entry.variables)
        outcome += name + u" = "_s + value;
    const QString reason = entry.reason.isEmpty() ? QString() : u": "_s + entry.reason;
    if (endThatCounts(entry) == RunObserver::LineEnd::Failed)
        outcome += u"failed"_s + reason;
    if (endThatCounts(entry) == RunObserver::LineEnd::Stopped)
        outcome += u"stopped"_s + reason;
    return outcome;
}

bool ComparedLine::differs(const QString &scratchFolder) const
{
    if (!before || !now)
        return true;
    const auto isSame = [&](const QString &a, QString b) {
        return mayBeTheSame(a, scratchFolder.isEmpty() ? b : b.remove(scratchFolder));
    };
    const auto isSameDeed = [&](const FlightDeed &a, const FlightDeed &b) {
        return a.kind == b.kind && std::ranges::equal(a.values, b.values, isSame);
    };
    const auto isSameVariable
        = [&](const auto &a, const auto &b) { return a.first == b.first && isSame(a.second, b.second); };
    return endThatCounts(*before) != endThatCounts(*now)
        || !std::ranges::equal(before->fields, now->fields, isSame)
        || !std::ranges::equal(deedsThatCount(*before), deedsThatCount(*now), isSameDeed)
        || !std::ranges::equal(before->variables, now->variables, isSameVariable);
}

std::vector<ComparedLine> compareRuns(const Entries &before, const Entries &now)
{
    const std::size_t rows = std::min(before.size(), mostCompared);
    const std::size_t columns = std::min(now.size(), mostCompared);
    // How many lines from there on can stand side by side.
    std::vector<quint16> common((rows + 1) * (columns + 1));
    const auto at = [&](std::size_t row, std::size_t column) -> quint16 & {
        return common[row * (columns + 1) + column];
    };
    for (std::size_t row = rows; row-- > 0;) {
        for (std::size_t column = columns; column-- > 0;) {
            at(row, column) = isSameLine(before[row], now[column])
                ? static_cast<quint16>(at(row + 1, column + 1) + 1)
                : std::max(at(row + 1, column), at(row, column + 1));
        }
    }
    std::vector<ComparedLine> lines;
    std::size_t row = 0;
    std::size_t column = 0;
    while (row < rows || column < columns) {
        if (row < rows && column < columns && isSameLine(before[row], now[column]))
            lines.push_back({&before[row++], &now[column++]});
        else if (column == columns || (row < rows && at(row + 1, column) >= at(row, column + 1)))
            lines.push_back({&before[row++], nullptr});
        else
            lines.push_back({nullptr, &now[column++]});
    }
    return lines;
}

} // namespace plum::kit
