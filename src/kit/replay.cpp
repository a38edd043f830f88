#include "kit/replay.h"

#include "flight/secrets.h"
#include "platform/recording/recording_platform.h"

#include <algorithm>
#include <utility>

namespace plum::kit {

using Sight = FlightEntry::Sight;

Replay::Replay(FlightLog record, recording::RecordingPlatform &desktop)
    : m_record(std::move(record))
    , m_desktop(desktop)
{
}

// Of the line's own entry; of a new line those of all of them, in order.
template <typename Visit> void Replay::eachSight(Visit visit) const
{
    if (m_entry) {
        std::ranges::for_each(m_entry->seen, visit);
        return;
    }
    for (const FlightEntry &entry : m_record.entries())
        std::ranges::for_each(entry.seen, visit);
}

// The next one with that text: lines between them are no longer there.
const FlightEntry *Replay::entryFor(const RunLine &line)
{
    const auto &entries = m_record.entries();
    const auto isIt = [text = line.text.trimmed()](
                          const FlightEntry &entry) { return entry.line.text.trimmed() == text; };
    const auto found
        = std::find_if(entries.begin() + static_cast<std::ptrdiff_t>(m_next), entries.end(), isIt);
    if (found == entries.end())
        return nullptr;
    m_next = static_cast<std::size_t>(found - entries.begin()) + 1;
    return &*found;
}

void Replay::lineBegins(const RunLine &line)
{
    m_entry = entryFor(line);
    auto &titles = m_desktop.windows().titles;
    titles.clear();
    eachSight([&](const Sight &sight) {
        if (sight.kind == Sight::Window)
            titles.insert(sight.what, sight.window);
    });
    FlightRecorder::lineBegins(line);
}

const Sight *Replay::find(Sight::Kind kind, const QString &what) const
{
    const Sight *found = nullptr;
    eachSight([&](const Sight &sight) {
        if (sight.kind == kind && sight.what == what)
            found = &sight;
    });
    return found;
}

std::optional<Position> Replay::positionOf(const Sight *sight, const QRect &area) const
{
    return sight && area.contains(sight->at)
        ? std::optional(Position{sight->at.x() - area.x(), sight->at.y() - area.y()})
        : std::nullopt;
}

std::optional<Position> Replay::colourAt(const QRect &area, Channels colour)
{
    return positionOf(find(Sight::Colour, nameOf(colour)), area);
}

std::optional<Position> Replay::pictureAt(const QRect &area, const QString &path)
{
    return positionOf(find(Sight::Picture, path), area);
}

bool Replay::hasGaps() const
{
    return std::ranges::any_of(
        m_record.entries(), [](const FlightEntry &entry) { return entry.passedBefore > 0; });
}

std::optional<QString> Replay::answerFor(const QString &variable) const
{
    if (!m_entry)
        return {};
    for (const auto &[name, value] : m_entry->variables) {
        if (name == variable && !value.contains(Secrets::mark))
            return value;
    }
    return {};
}

} // namespace plum::kit
