#pragma once

#include "engine/script_vocabulary.h"

#include <QHash>
#include <QJsonArray>

#include <optional>

namespace plum {
class RunControl;
}

namespace plum::kit {

// The breakpoints of an editor, which knows files by their paths: each is moved to the next line that runs.
class SourceBreakpoints
{
public:
    struct Breakpoint
    {
        int id = 0;
        int line = 0; // where a run is held; 0: nowhere
        QString problem = {}; // why it is nowhere
    };

    SourceBreakpoints(const ScriptVocabulary &vocabulary, RunControl &control)
        : m_vocabulary(vocabulary)
        , m_control(control)
    {
    }

    // The script that is going to be run, an absolute path: its breakpoints and those of its parts count.
    void setProgram(const QString &path);

    // In place of all that were set in that file before, in the order of `lines`.
    QList<Breakpoint> set(const QString &path, const QList<int> &lines);

    // The lines of a file that runs can be held at; nothing when it cannot be read.
    std::optional<QList<int>> runnable(const QString &path) const;

    // Those of a line where a run is held. `file`: as a run names it.
    QList<int> idsAt(const QString &file, int line) const;

    // The path of a file as a run names it.
    QString pathOf(const QString &file) const;

private:
    void apply(const QString &path);
    std::optional<QString> nameInRun(const QString &path) const;

    const ScriptVocabulary &m_vocabulary;
    RunControl &m_control;
    QString m_program;
    Edition m_edition = Edition::One; // of the program
    QHash<QString, QList<Breakpoint>> m_all; // by path without links
    int m_lastId = 0;
};

} // namespace plum::kit
