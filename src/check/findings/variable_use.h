#pragma once

#include "check/findings/report.h"

#include <QHash>

#include <optional>

namespace plum {

// Which variables a script sets and reads, and what is certainly in them.
class VariableUse
{
public:
    // `value` when the line gives it a text that is known.
    void set(const QString &name, int line, int column, std::optional<QString> value = {});
    void read(const QString &name, int line, int column);

    // Whether a line so far sets it.
    bool isSet(const QString &name) const { return m_sets.contains(name); }

    // Said of a variable that is most likely none, should no line read it.
    void doubt(const QString &name, const QString &message) { m_doubts.insert(name, message); }

    // From here to there lines repeat: what stands further down may be set already.
    void addLoop(int firstLine, int lastLine);

    // Some line sets a variable whose name is not known before the run.
    void setSomething() { m_setsUnknown = true; }

    // The text that `name` holds in `line`, when the nearest line above that sets it sets it to a text that
    // is known.
    std::optional<QString> constant(const QString &name, int line) const;

    // What reading a variable that nothing has set comes to.
    enum class Unset {
        IsItsName, // edition 1
        EndsTheRun, // edition 2
    };

    // never-set, never-read, name-case; and the names as those of one scope.
    void report(Report &report, Unset unset) const;

private:
    struct Place
    {
        int line;
        int column;
        std::optional<QString> value;
    };

    void addNames(Report &report) const;
    bool maySetBefore(const QString &name, int line) const;
    void reportUnset(Report &report, const QString &name, const Place &place, Unset unset) const;
    void reportUnread(Report &report) const;
    QString otherCase(const QString &name) const;

    QHash<QString, QList<Place>> m_sets;
    QHash<QString, QList<Place>> m_reads;
    QHash<QString, QString> m_doubts;
    QList<std::pair<int, int>> m_loops;
    bool m_setsUnknown = false;
};

} // namespace plum
