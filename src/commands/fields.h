#pragma once

#include <QString>

namespace plum {

class CommandCall;

// Field `index` (from 0) as it is read where errors are suppressed statement by statement: a field that
// cannot be read is empty. The one field of a line that has no others answers every index.
QString fieldOrEmpty(const CommandCall &call, int index);

// As above, but a field that the line does not have is empty even when the line has a single field.
QString writtenField(const CommandCall &call, int index);

} // namespace plum
