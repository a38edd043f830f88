#pragma once

#include "check/findings/app_files.h"

#include <QHash>

#include <algorithm>
#include <optional>
#include <vector>

namespace plum {

// Which variables a script sets and reads, and what is certainly in them. Lines come in their order.
class VariableUse
{
public:
    // `names` outlives it.
    explicit VariableUse(NameTable &names)
        : m_names(names)
    {
    }

    // Forgets everything: another scope begins.
    void clear();

    // `value` when the line gives it a text that is known.
    void set(const QString &name, int line, int column, const std::optional<QString> &value = {});
    void read(const QString &name, int line, int column);

    // Whether a line so far sets it.
    bool isSet(const QString &name) const;

    // Said of a variable that is most likely none, should no line read it.
    void doubt(const QString &name, const QString &message);

    // From here to there lines repeat: what stands further down may be set already.
    void addLoop(int firstLine, int lastLine) { m_loops += {firstLine, lastLine}; }

    // Some line sets a variable whose name is not known before the run.
    void setSomething();

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

    // From here on all that is asked and told is written into the transcript of one line, too; null: no more.
    void record(LineTranscript *transcript) { m_transcript = transcript; }
    // Whether everything that the line had asked has the same answer for one that stands here.
    bool answersAsBefore(const LineTranscript &transcript, int line) const;
    void repeat(const LineTranscript &transcript, int line);

private:
    static constexpr int nowhere = -1;

    struct Place
    {
        int name;
        int line;
        int column;
        bool isSet;
        int setBefore = nowhere; // the place above where the same variable is set
        std::optional<QString> value = {};
    };

    // Places of one variable in m_places.
    struct Variable
    {
        int firstSet = nowhere;
        int lastSet = nowhere;
        bool isRead = false;
    };

    void add(int name, int line, int column, bool isSet, const std::optional<QString> &value);
    Variable variable(int name) const;
    const Place &place(int index) const { return m_places[static_cast<std::size_t>(index)]; }
    std::optional<QString> constantOf(int name, int line) const;
    bool maySetBefore(int name, int line) const;
    QStringList namesThatAreSet() const;
    void addNames(Report &report) const;
    void reportUnset(Report &report, const Place &where, Unset unset, const QStringList &known) const;
    void reportUnread(Report &report) const;

    NameTable &m_names;
    std::vector<Place> m_places;
    std::vector<Variable> m_variables; // by name
    QHash<int, QString> m_doubts;
    QList<std::pair<int, int>> m_loops;
    bool m_setsUnknown = false;
    LineTranscript *m_transcript = nullptr;
};

// Judges a line, or repeats what judging it came to when nothing can differ.
template <typename Judge>
void judgeOnce(LineTranscript &transcript, int line, Report &report, VariableUse &variables, Judge judge)
{
    const auto isStill = [](const LineTranscript::AskedFile &asked) { return AppFiles::isStill(asked); };
    if (transcript.isKept && variables.answersAsBefore(transcript, line)
        && std::ranges::all_of(transcript.askedFiles, isStill)) {
        report.repeat(transcript, line);
        variables.repeat(transcript, line);
        return;
    }
    transcript = {};
    transcript.isKept = true;
    report.record(&transcript);
    variables.record(&transcript);
    judge();
    report.record(nullptr);
    variables.record(nullptr);
}

} // namespace plum
