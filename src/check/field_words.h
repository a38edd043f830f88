#pragma once

#include "engine/command_table.h"

namespace plum {

// What a table of commands says of one in English, in the language of the session.
QString commandWords(QStringView english);

// What a field holds, in words: "a point x:y".
QString kindInWords(const Field &field);

// A field as one line for people: its name, what it holds, and what an empty one means.
QString fieldInWords(const Field &field);

// A command with the names of its fields, as it is written: "mouse.move to". A field that may be left out
// stands in brackets.
QString usageOf(const QString &head, std::span<const Field> fields);

} // namespace plum
