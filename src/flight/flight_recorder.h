#pragma once

#include "engine/editions/run_observer.h"
#include "flight/film.h"
#include "flight/flight_log.h"
#include "flight/secrets.h"
#include "search/search_observer.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>

#include <chrono>
#include <functional>
#include <vector>

namespace plum {

class FlightCamera;
class StopSignal;

// Keeps in memory what the run that goes on, or was the last one, has done. Answers of the user, texts of the
// clipboard and what lines make of them are left out.
class FlightRecorder : public RunObserver, public SearchObserver
{
public:
    enum class Keeps {
        NoSecrets,
        Everything,
    };

    // From now on.
    void setKeeps(Keeps keeps) { m_keeps = keeps; }

    // Takes the pictures of the runs at whose beginning `areWanted` says so. Without it there are none.
    void setCamera(FlightCamera &camera, std::function<bool()> areWanted);

    const FlightLog &log() const { return m_log; }
    const Film &film() const { return m_film; }

    // What ends runs; also said to what takes long here.
    void setStop(const StopSignal &stop) { m_stop = &stop; }

    // How the run has ended, if not well.
    void noteOutcome(const QString &sentence);

    // What a port was asked to do.
    void deed(FlightDeed what);

    // A line has found that on the desktop.
    void seen(FlightEntry::Sight sight);

    // A colour as records name it: RRGGBB.
    static QString nameOf(Channels colour);

    // A run has put the pointer there.
    void noteMotion(QPoint to);

    // A text that is not to be seen, from now on.
    void addSecret(const QString &text);

    // For a text that may be a secret as a whole.
    QString unlessSecret(const QString &text) const;

    void runBegins(const QString &script) override;
    void lineBegins(const RunLine &line) override;
    void fieldRead(int index, const QString &value) override;
    void variableSet(const QString &name, const QString &value) override;
    void answered(const QString &answer) override { addSecret(answer); }
    void refused(const QString &sentence) override;
    void lineEnds(LineEnd how, const QString &reason) override;
    void linesPassed(qint64 count) override { m_passed += count; }

    bool wantsEveryLine() const override { return !m_secrets.isEmpty(); }

    void colourSearched(const QRect &area, const ScreenRegion &region, Channels colour,
        std::optional<Position> found) override;
    void pictureSearched(const QRect &area, const QString &path, const ScreenRegion &region,
        const PictureTemplate &picture, std::optional<Position> found) override;

private:
    struct Open
    {
        FlightLog::Id entry = 0;
        bool hasSecret = false; // one of its fields; what it sets is one then
    };

    qint64 now() const { return m_clock.isValid() ? m_clock.nsecsElapsed() / 1000 : 0; }
    FlightEntry *current();
    void stopAsked(std::chrono::steady_clock::time_point when);
    QString withoutSecrets(const QString &text) const;
    void takePicture(Film::Id FlightEntry::*when);
    void takePicture(const ScreenRegion &searched);
    void missed(
        const QRect &area, const QString &path, const ScreenRegion &region, const PictureTemplate &picture);

    Keeps m_keeps = Keeps::NoSecrets;
    FlightLog m_log;
    Film m_film;
    const StopSignal *m_stop = nullptr;
    FlightCamera *m_camera = nullptr;
    std::function<bool()> m_arePicturesWanted;
    bool m_takesPictures = false; // of this run
    Secrets m_secrets;
    QElapsedTimer m_clock;
    std::vector<Open> m_open; // the innermost line last
    QSet<std::pair<QString, int>> m_secretLines; // file and number of lines that had secrets in their fields
    QSet<QString> m_missed; // pictures whose nearest misses were looked for
    qint64 m_missTime = 0; // microseconds that this has taken
    qint64 m_passed = 0;
};

} // namespace plum
