#pragma once

#include "engine/command_table.h"

#include <optional>

namespace plum {

// Why a text does not fit a field.
struct Misfit
{
    QString rule;
    QString words; // a sentence without its full stop, in the words of a run that fails
};

// How large the numbers of a field may be.
enum class NumberWidth {
    Bits16,
    Bits32,
};

// Holds a text that stands in a script against the kind of its field, by the conversions that run at run
// time. Nothing for a text that fits. Empty texts and words of a choice are for the caller to judge.
std::optional<Misfit> misfitOf(const Field &field, const QString &text, NumberWidth width);

} // namespace plum
