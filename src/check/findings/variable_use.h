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

    // From here to there lines repeat: what stands further down may be set already.
    void addLoop(int firstLine, int lastLine);

    // Some line sets a variable whose name is not known before the run.
    void setSomething() { m_setsUnknown = true; }

    // The text that `name` holds in `line`, when exactly one line sets it, above, to a text that is known.
    std::optional<QString> constant(const QString &name, int line) const;

    // What reading a variable that nothing has set comes to.
    enum class Unset {
        IsItsName, // edition 1
        EndsTheRun, // edition 2
    };

    // never-set, never-read, name-case.
    void report(Report &report, Unset unset) const;

private:
    struct Place
    {
        int line;
        int column;
        std::optional<QString> value;
    };

    bool maySetBefore(const QString &name, int line) const;
    QString otherCase(const QString &name) const;

    QHash<QString, QList<Place>> m_sets;
    QHash<QString, QList<Place>> m_reads;
    QList<std::pair<int, int>> m_loops;
    bool m_setsUnknown = false;
};

} // namespace plum
