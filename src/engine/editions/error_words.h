#pragma once

#include <QString>

namespace plum {

// Why a value of a script cannot be used. Reports, standard error and whoever else tells of an error take
// their words from one table.
enum class ErrorCause {
    NotANumber,
    NotMilliseconds,
    OutOfRange,
    NotHexadecimal,
    NotAPoint,
    NotAnOffset,
    NotARegion,
    NotAHandle,
    NotAColour,
    NoPiece,
    EmptySearch,
    StartOrCount,
    MissingProgram,
    NoTimer,
};

// A part of a sentence without a full stop. `culprit` is the value as it was written.
QString errorWords(ErrorCause cause, const QString &culprit = {});

} // namespace plum
