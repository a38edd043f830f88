#pragma once

#include <QList>
#include <QString>

namespace plum {

enum class Severity {
    Hint, // worth knowing; nothing is wrong
    Warning, // most likely not what was meant
    Error, // the line certainly fails or does nothing
};

// One thing that can be said about a script before it runs.
struct Finding
{
    int line = 1; // from 1
    int column = 1; // from 1, in UTF-16 code units of the line
    Severity severity = Severity::Warning;
    QString rule; // its id, as in check_rules.h
    QString message; // one sentence

    bool operator==(const Finding &) const = default;
};

using Findings = QList<Finding>;

} // namespace plum
