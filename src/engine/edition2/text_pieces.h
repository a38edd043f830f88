#pragma once

#include <QStringList>

namespace plum::edition2 {

// The pieces of a text that repetitions go through.

// Lines end in LF or CR LF; the last one needs no end.
QStringList linesOf(const QString &text);

// An empty separator gives the characters. An empty text has no pieces.
QStringList piecesOf(const QString &text, const QString &separator);

} // namespace plum::edition2
