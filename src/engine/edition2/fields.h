#pragma once

#include "engine/edition2/line_reader.h"

#include <QList>

#include <vector>

namespace plum::edition2 {

// What each argument of a line is for.
struct BoundValue
{
    const Field *field = nullptr;
    const Value *value = nullptr; // null when the line leaves it out
};

// The arguments of a line by the fields of its row: one entry for each field, which is empty for a repeated
// one, and the values of that.
struct BoundLine
{
    std::vector<BoundValue> single;
    std::vector<BoundValue> repeated;
};

// Gives every argument its field. What does not fit is reported, as far as it can be known before the run.
// The result points into `line` and `info`.
BoundLine bindFields(const Line &line, const CommandInfo &info, QList<Mistake> &mistakes);

// Why a text that a run has worked out cannot stand in the field; empty when it can.
QString problemWith(const Field &field, const QString &text);

// Whether the empty text is a value of the field. Where it is none, it stands for a field that is left out.
bool takesEmptyText(const Field &field);

} // namespace plum::edition2
