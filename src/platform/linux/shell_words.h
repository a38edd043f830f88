#pragma once

#include <QString>
#include <QStringList>

namespace plum {

// Splits a text into words as a POSIX shell does, with its three kinds of quoting but without any expansion:
// "$", "~", "*" and operators are plain characters. A quote that is never closed reaches to the end.
QStringList shellWords(const QString &text);

} // namespace plum
