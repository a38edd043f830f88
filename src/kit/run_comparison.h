#pragma once

#include <QStringList>

#include <deque>
#include <vector>

namespace plum {
struct FlightEntry;
}

namespace plum::kit {

// A line of two runs, side by side; null where only the other one has it.
struct ComparedLine
{
    const FlightEntry *before = nullptr;
    const FlightEntry *now = nullptr;

    // Whether fields, deeds, variables or the kind of the end do; whatever the languages of the two sessions.
    // `scratchFolder`: where the second run's copies of files are, which count as the files.
    bool differs(const QString &scratchFolder = {}) const;
};

// The lines of both runs in their order; as many as can be stand side by side, by their texts. Of long runs
// the first `mostCompared` lines of each are looked at.
constexpr std::size_t mostCompared = 3000;
std::vector<ComparedLine> compareRuns(
    const std::deque<FlightEntry> &before, const std::deque<FlightEntry> &now);

// What a line came to, a piece each for its fields, deeds, variables and its end; for people.
QStringList outcomeOf(const FlightEntry &entry);

} // namespace plum::kit
