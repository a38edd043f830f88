#pragma once

#include "engine/edition2/tree.h"

#include <QList>

namespace plum::edition2 {

// What is wrong with a script, for people: one sentence.
struct Mistake
{
    Position at;
    QString reason;
};

// Reads one line: its head, its arguments as they are written, its comment. Which words there are is not
// known here; `word` stays Word::Command unless the line is nothing but a comment. What cannot be read is
// reported, and the rest of that line is left out.
Line readLine(QStringView text, int number, QList<Mistake> &mistakes);

// Letters of any script, digits and "_", not beginning with a digit.
bool isName(QStringView text);

// -?digits[.digits]
bool isNumber(QStringView text);

// `count` whole numbers, each may be negative, joined by ":".
bool areCoordinates(QStringView text, int count);

} // namespace plum::edition2
