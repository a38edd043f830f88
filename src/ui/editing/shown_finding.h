#pragma once

#include "check/findings/finding.h"

#include <QList>

namespace plum {

// What the checker has found, at a place of the text that the editor shows.
struct ShownFinding
{
    int position = 0; // in the editor's document
    int length = 0;
    Severity severity = Severity::Warning;
    QString sentence; // with the id of its rule

    bool operator==(const ShownFinding &) const = default;
};

using ShownFindings = QList<ShownFinding>;

} // namespace plum
