#pragma once

#include "flight/flight_log.h"
#include "flight/flight_recorder.h"
#include "search/search_answers.h"

#include <optional>

namespace plum::recording {
class RecordingPlatform;
}

namespace plum::kit {

// A recorded run as the desktop of another one: each line sees what the same line saw then, and a line that
// was not there sees what was last seen of what it looks for. Writes down what the other run does.
class Replay final : public FlightRecorder, public SearchAnswers
{
public:
    Replay(FlightLog record, recording::RecordingPlatform &desktop);

    // What the user answered then to the question of the line that is being carried out; nothing where the
    // record does not say it.
    std::optional<QString> answerFor(const QString &variable) const;

    const FlightLog &record() const { return m_record; }

    // Lines that only compute were not all written down then.
    bool hasGaps() const;

    bool wantsEveryLine() const override { return true; }

    void lineBegins(const RunLine &line) override;
    std::optional<Position> colourAt(const QRect &area, Channels colour) override;
    std::optional<Position> pictureAt(const QRect &area, const QString &path) override;

private:
    template <typename Visit> void eachSight(Visit visit) const;
    const FlightEntry *entryFor(const RunLine &line);
    const FlightEntry::Sight *find(FlightEntry::Sight::Kind kind, const QString &what) const;
    std::optional<Position> positionOf(const FlightEntry::Sight *sight, const QRect &area) const;

    FlightLog m_record;
    recording::RecordingPlatform &m_desktop;
    std::size_t m_next = 0; // of the record's entries
    const FlightEntry *m_entry = nullptr; // that stands for the line; null: none
};

} // namespace plum::kit
