#include "flight/flight_recorder.h"

#include "flight/flight_camera.h"
#include "platform/stop_signal.h"
#include "search/nearest_miss.h"

#include <algorithm>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;
using Kind = FlightDeed::Kind;

namespace {

// Looking for a near miss takes as long as a search; so much of a run's time it may take, in parts of it.
constexpr qint64 missShare = 100;

QString textOf(const QRect &area)
{
    return u"%1:%2:%3:%4"_s.arg(area.x()).arg(area.y()).arg(area.width()).arg(area.height());
}

// Where in an area, in pixels of the screen.
QPoint pointOf(const QRect &area, const Position &position)
{
    return {static_cast<int>(area.x() + position.x), static_cast<int>(area.y() + position.y)};
}

QString textOf(const QPoint &point)
{
    return u"%1:%2"_s.arg(point.x()).arg(point.y());
}

FlightDeed deedOf(const QRect &area, const NearestMiss &miss)
{
    QStringList pixels;
    for (const NearestMiss::Pixel &pixel : miss.first)
        pixels += u"%1:%2"_s.arg(pixel.column).arg(pixel.row);
    if (static_cast<qsizetype>(miss.differing) > pixels.size())
        pixels += u"…"_s;
    return {Kind::NearestMiss,
        {textOf(pointOf(area, miss.at)), QString::number(miss.differing), QString::number(miss.compared),
            QString::number(miss.byChannel[2]), QString::number(miss.byChannel[1]),
            QString::number(miss.byChannel[0]), pixels.join(u", ")}};
}

} // namespace

void FlightRecorder::runBegins(const QString &script)
{
    if (!m_open.empty()) {
        deed({Kind::AnotherRun, {script}});
        return;
    }
    m_log.begin(script);
    m_film.clear();
    m_takesPictures = m_camera && m_arePicturesWanted();
    if (m_takesPictures)
        m_camera->begin();
    m_secrets.clear();
    m_secretLines.clear();
    m_missed.clear();
    m_missTime = 0;
    m_passed = 0;
    m_clock.start();
}

void FlightRecorder::lineBegins(const RunLine &line)
{
    const FlightLog::Id id = m_log.add({.line = line,
        .depth = static_cast<int>(m_open.size()),
        .passedBefore = std::exchange(m_passed, 0),
        .begun = now()});
    m_open.push_back({id, m_secretLines.contains({line.file, line.number})});
    if (m_takesPictures)
        takePicture(&FlightEntry::before);
}

void FlightRecorder::setCamera(FlightCamera &camera, std::function<bool()> areWanted)
{
    m_camera = &camera;
    m_arePicturesWanted = std::move(areWanted);
}

void FlightRecorder::noteMotion(QPoint to)
{
    if (m_takesPictures)
        m_camera->noteMotion(to);
}

void FlightRecorder::takePicture(Film::Id FlightEntry::*when)
{
    FlightEntry *entry = current();
    if (!entry || entry->showsSearch)
        return;
    if (std::optional<ScreenTile> tile = m_camera->aroundPointer(now()))
        entry->*when = m_film.add(std::move(*tile));
}

// A line may search over and over: what it saw first and last counts.
void FlightRecorder::takePicture(const ScreenRegion &searched)
{
    FlightEntry *entry = current();
    if (!entry || m_open.empty())
        return;
    std::optional<ScreenTile> tile = m_camera->of(searched, now());
    if (!tile)
        return;
    const bool isFirst = !std::exchange(entry->showsSearch, true);
    if (isFirst)
        entry->before = m_film.add(std::move(*tile));
    else if (entry->after == entry->before)
        entry->after = m_film.add(std::move(*tile));
    else
        entry->after = m_film.replace(entry->after, std::move(*tile));
    if (isFirst)
        entry->after = entry->before;
}

FlightEntry *FlightRecorder::current()
{
    return m_log.find(m_open.empty() ? m_log.last() : m_open.back().entry);
}

QString FlightRecorder::withoutSecrets(const QString &text) const
{
    return FlightLog::cut(m_keeps == Keeps::Everything ? text : m_secrets.without(text));
}

QString FlightRecorder::unlessSecret(const QString &text) const
{
    return m_keeps == Keeps::Everything ? FlightLog::cut(text) : Secrets::mark;
}

void FlightRecorder::addSecret(const QString &text)
{
    m_secrets.add(text);
}

void FlightRecorder::fieldRead(int index, const QString &value)
{
    FlightEntry *entry = current();
    if (!entry || m_open.empty())
        return;
    const QString shown = withoutSecrets(value);
    if (m_keeps == Keeps::NoSecrets && shown != FlightLog::cut(value)) {
        m_open.back().hasSecret = true;
        m_secretLines.insert({entry->line.file, entry->line.number});
    }
    int added = 0;
    for (; entry->fields.size() <= index; ++added)
        entry->fields += QString();
    const QString before = std::exchange(entry->fields[index], shown);
    for (; added > 0; --added)
        m_log.note(QString());
    m_log.note(shown, before);
}

void FlightRecorder::variableSet(const QString &name, const QString &value)
{
    FlightEntry *entry = current();
    if (!entry)
        return;
    if (!m_open.empty() && m_open.back().hasSecret)
        addSecret(value);
    const QString shown = withoutSecrets(value);
    if (entry->variables.size() < FlightLog::mostDeeds) {
        entry->variables += {name, shown};
        m_log.note(name);
        m_log.note(shown);
    }
}

void FlightRecorder::deed(FlightDeed what)
{
    FlightEntry *entry = current();
    if (!entry)
        return;
    for (QString &value : what.values)
        value = withoutSecrets(value);
    // The last ones count: they are what a line was at when it was stopped.
    std::optional<FlightDeed> given;
    if (entry->deeds.size() == FlightLog::mostDeeds) {
        given = entry->deeds.takeFirst().what;
        ++entry->moreDeeds;
    }
    entry->deeds += {now(), what};
    m_log.note(what, given ? &*given : nullptr);
}

void FlightRecorder::noteOutcome(const QString &sentence)
{
    m_log.setOutcome(withoutSecrets(sentence));
    if (!m_stop)
        return;
    if (const auto asked = m_stop->raisedAt())
        stopAsked(*asked);
}

// Where it belongs in time: the run may have done something before it looked. Nowhere if it was meant for an
// earlier run.
void FlightRecorder::stopAsked(std::chrono::steady_clock::time_point when)
{
    using namespace std::chrono;
    const qint64 at = now() - duration_cast<microseconds>(steady_clock::now() - when).count();
    FlightLog::Id line = m_log.last();
    FlightEntry *entry = m_log.find(line);
    while (entry && entry->begun > at)
        entry = m_log.find(--line);
    if (!entry)
        return;
    const auto later
        = std::ranges::find_if(entry->deeds, [at](const FlightEntry::Deed &deed) { return deed.at > at; });
    const FlightDeed what{Kind::StopAsked};
    entry->deeds.insert(later - entry->deeds.begin(), {at, what});
    m_log.note(what, nullptr);
}

void FlightRecorder::seen(FlightEntry::Sight sight)
{
    FlightEntry *entry = current();
    if (!entry)
        return;
    sight.what = withoutSecrets(sight.what);
    // A line that waits may look over and over.
    std::optional<QString> given;
    const auto same = std::ranges::find_if(entry->seen, [&](const FlightEntry::Sight &other) {
        return other.kind == sight.kind && other.what == sight.what;
    });
    if (same != entry->seen.end() || entry->seen.size() == FlightLog::mostDeeds)
        given = entry->seen.takeAt(same == entry->seen.end() ? 0 : same - entry->seen.begin()).what;
    entry->seen += sight;
    if (given)
        m_log.note(sight.what, *given);
    else
        m_log.note(sight.what);
}

QString FlightRecorder::nameOf(Channels colour)
{
    return u"%1"_s.arg(colour.pixel(), 6, 16, QChar(u'0')).toUpper();
}

void FlightRecorder::refused(const QString &sentence)
{
    deed({Kind::Refused, {sentence}});
}

void FlightRecorder::lineEnds(LineEnd how, const QString &reason)
{
    if (m_open.empty())
        return;
    if (m_takesPictures)
        takePicture(&FlightEntry::after);
    if (FlightEntry *entry = current()) {
        entry->end = how;
        entry->reason = withoutSecrets(reason);
        entry->lasted = now() - entry->begun;
        m_log.note(entry->reason, {}); // which it had in the beginning
    }
    m_open.pop_back();
}

void FlightRecorder::colourSearched(
    const QRect &area, const ScreenRegion &region, Channels colour, std::optional<Position> found)
{
    if (m_takesPictures)
        takePicture(region);
    const QString name = nameOf(colour);
    if (!found) {
        deed({Kind::ColourNotSeen, {name, textOf(area)}});
        return;
    }
    const QPoint point = pointOf(area, *found);
    seen({.kind = FlightEntry::Sight::Colour, .what = name, .at = point});
    deed({Kind::ColourSeen, {name, textOf(area), textOf(point)}});
}

void FlightRecorder::pictureSearched(const QRect &area, const QString &path, const ScreenRegion &region,
    const PictureTemplate &picture, std::optional<Position> found)
{
    if (m_takesPictures)
        takePicture(region);
    if (!found) {
        missed(area, path, region, picture);
        return;
    }
    const QPoint point = pointOf(area, *found);
    seen({.kind = FlightEntry::Sight::Picture, .what = path, .at = point});
    deed({Kind::PictureSeen, {path, textOf(area), textOf(point)}});
}

void FlightRecorder::missed(
    const QRect &area, const QString &path, const ScreenRegion &region, const PictureTemplate &picture)
{
    deed({Kind::PictureNotSeen, {path, textOf(area)}});
    // The first time in any case; a script that waits for a picture misses it over and over.
    const qint64 begun = now();
    if (m_missed.contains(path) && m_missTime * missShare > begun)
        return;
    m_missed.insert(path);
    const std::optional<NearestMiss> miss = findNearestMiss(region, picture, m_stop);
    m_missTime += now() - begun;
    if (m_stop && m_stop->isRaised())
        return;
    deed(miss ? deedOf(area, *miss) : FlightDeed{Kind::NothingAlike});
}

} // namespace plum
