#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace plum {

// What the editor shows of a run that is held before one of its lines.
struct HeldLine
{
    struct Value
    {
        QString name;
        QString value;
    };

    std::optional<int> line; // of the editor, from 0; none when it is another file's
    QString words; // where that is, and why
    QList<Value> arguments; // what those of the line come to
    QList<Value> variables;
};

// Where a run that is followed is held first.
enum class FollowFrom {
    Entry, // its first line
    Breakpoints,
    Caret, // the line of the caret, or a breakpoint before it
};

// What is to become of a run that is followed. While it is not held, only the last two mean something.
enum class FollowedRunWish {
    GoOn, // to the next breakpoint
    StepOver,
    StepInto,
    StepOut,
    RunToCaret,
    Hold, // at its next line
    Stop,
};

} // namespace plum
