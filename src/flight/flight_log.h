#pragma once

#include "engine/editions/run_observer.h"
#include "flight/film.h"
#include "flight/flight_deed.h"

#include <QList>
#include <QPoint>
#include <QStringList>

#include <deque>
#include <optional>
#include <utility>

namespace plum {

// What one line did. Times are microseconds since the run began.
struct FlightEntry
{
    struct Deed
    {
        qint64 at = 0;
        FlightDeed what = {};
    };

    // What a line found on the desktop, for who runs it where there is none.
    struct Sight
    {
        enum Kind {
            Colour,
            Picture,
            Window,
        };

        Kind kind = Colour;
        QString what = {}; // RRGGBB, a path, or a title
        QPoint at = {}; // pixels of the screen
        qint32 window = 0;
    };

    RunLine line = {};
    int depth = 0; // lines around it that had not ended
    qint64 passedBefore = 0; // lines in front of it that were not written down
    qint64 begun = 0;
    qint64 lasted = 0;
    std::optional<RunObserver::LineEnd> end = {}; // nothing while it goes on
    QString reason = {};
    QStringList fields = {};
    QList<Deed> deeds = {};
    qint64 moreDeeds = 0; // that were not kept
    QList<std::pair<QString, QString>> variables = {}; // that were set, with their values
    QList<Sight> seen = {}; // the last ones
    Film::Id before = 0; // pictures, where they are taken
    Film::Id after = 0;
    bool showsSearch = false; // they are of what was searched
};

// The entries of one run, the newest ones, in bounded memory.
class FlightLog
{
public:
    static constexpr qsizetype mostBytes = qsizetype(8) << 20;
    static constexpr qsizetype mostDeeds = 200; // of one line
    static constexpr qsizetype longestText = 2000; // characters of a value or deed

    using Id = qint64;

    void begin(const QString &script);

    // How the run has ended, as a sentence.
    void setOutcome(const QString &sentence) { m_outcome = sentence; }
    const QString &outcome() const { return m_outcome; } // empty: it is done, or goes on

    Id add(FlightEntry entry);

    // Null when the entry was given up for newer ones.
    FlightEntry *find(Id id);

    // Says what an entry has got, and what it has lost for it. Entries may be given up: no pointer to one is
    // good behind this.
    void note(const QString &added);
    void note(const QString &added, const QString &removed);
    void note(const FlightDeed &added, const FlightDeed *removed);

    // What is kept of a text.
    static QString cut(const QString &text);

    const QString &script() const { return m_script; }
    const std::deque<FlightEntry> &entries() const { return m_entries; }
    qint64 forgotten() const { return m_first; } // entries that were given up
    qsizetype bytes() const { return m_bytes; }
    Id last() const { return m_first + static_cast<Id>(m_entries.size()) - 1; }

private:
    static qsizetype bytesOf(const FlightEntry &entry);
    void makeRoom();

    QString m_script;
    QString m_outcome;
    std::deque<FlightEntry> m_entries;
    Id m_first = 0;
    qsizetype m_bytes = 0;
};

} // namespace plum
