#pragma once

#include "check/findings/finding.h"

namespace plum {

// The findings of one file, by the name under which the user knows it.
struct CheckedFile
{
    QString file;
    Findings findings;
};

// `file:line:column: severity: sentence [rule]`, a line each.
QString findingsAsText(const QList<CheckedFile> &files);

// One array of objects with `file`, `line` and `column` (both from 1), `severity` ("error", "warning" or
// "hint"), `rule` and `message`.
QByteArray findingsAsJson(const QList<CheckedFile> &files);

// A log of the Static Analysis Results Interchange Format (OASIS SARIF 2.1.0) with one run; its levels are
// error, warning and note.
QByteArray findingsAsSarif(const QList<CheckedFile> &files);

} // namespace plum
