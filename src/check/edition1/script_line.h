#pragma once

#include "check/edition1/argument_pieces.h"

#include <optional>

namespace plum::edition1 {

// One line of an edition-1 script as the run loop takes it apart.
struct ScriptLine
{
    int number = 1; // from 1
    QString nameSpace = {};
    QString command = {}; // empty where the head has no dot
    int commandColumn = 1;
    bool hasDot = false;
    bool hasSecondDot = false;
    bool startsWithBlank = false;
    std::optional<Arguments> arguments = {}; // none: those of the line before count

    // Nothing for comments and empty lines.
    static std::optional<ScriptLine> read(const QString &text, int number);

    QString head() const { return hasDot ? nameSpace + u'.' + command : nameSpace; }
};

} // namespace plum::edition1
