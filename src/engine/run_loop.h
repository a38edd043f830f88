#pragma once

#include "engine/argument_reader.h"
#include "engine/command_table.h"

#include <QHash>

#include <memory>

namespace plum {

class Launcher;
class Waiter;
struct RunLimit;
struct RunState;

// Interprets the run list line by line. A line is `namespace.command arguments`; the namespace's handler
// does the rest. The loop itself knows counted repetition (`while.start`, `while.end`) and suspension: where
// a routine says so the loop is left, and the user's answer calls it again from where it was.
//
// Waiting inside a run lets the user interface start another run. Both then share the run state; whatever
// the second one does to it, the first goes on reading lines by index, and a missing line counts as empty.
class RunLoop
{
public:
    RunLoop(RunState &state, const ArgumentReader &reader, Waiter &waiter, Launcher &launcher);

    // Lines whose head begins with `name` go to `handler`. The namespace `while` is the loop's own.
    void addNamespace(const QString &name, Handler &handler);

    // The loop's own words.
    static constexpr QStringView ownNamespace = u"while";
    static QList<CommandInfo> ownCommands();

    // Runs the lines `start` to `end`, both included; the bounds are those at the time of the call. `end` is
    // read again after every line: the variables are emptied, and a "jb" process ends, at the line that it
    // then names. Raises the run-time errors of the lines, with the line's number.
    void RunLines(qint16 &start, qint16 &end);

private:
    enum class Level {
        Run, // the call that ends the run
        Repetition, // one more pass through a loop's body
    };
    enum class Outcome {
        ReachedEnd,
        Suspended,
        ProcessEnded,
    };

    // What one call remembers from line to line: a head without "." keeps the command of the line before,
    // a line without a blank keeps its arguments.
    struct CurrentLine
    {
        QString nameSpace;
        QString command;
        QString arguments;
        QString whileArguments;
        bool isWhole = false; // has command and arguments of its own
        std::shared_ptr<const RunLimit> limit;

        void parse(const QString &text);
    };

    struct OwnRow
    {
        CommandInfo info;
        Outcome (RunLoop::*routine)(int index, CurrentLine &line);
    };
    static std::span<const OwnRow> ownTable();

    Outcome pass(qint16 start, qint16 &end, Level level);
    Outcome execute(int index, CurrentLine &line);
    Outcome observed(int index, CurrentLine &line);
    Outcome carryOut(int index, CurrentLine &line);
    Outcome dispatch(int index, CurrentLine &line);
    Outcome startBody(int index, CurrentLine &line);
    Outcome endBody(int index, CurrentLine &line);
    Outcome repeatBody(const QString &arguments);

    RunState &m_state;
    const ArgumentReader &m_reader;
    Waiter &m_waiter;
    Launcher &m_launcher;
    QHash<QString, Handler *> m_handlers;
    qint16 m_extraLineDelay = 0; // milliseconds; no command sets it
    bool m_processEnded = false;
};

} // namespace plum
