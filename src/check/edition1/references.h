#pragma once

#include "check/edition1/argument_pieces.h"

namespace plum::edition1 {

// What may stand before the dot of a reference.
const QStringList &referencePrefixes();

// The names that a prefix knows; none for `set`, whose names are the script's own.
QStringList referenceNames(const QString &prefix);

// Whether some prefix knows this name.
bool isReferenceName(const QString &name);

// Whether a reference with another prefix than `set` means anything.
bool isReference(const Value &value);

} // namespace plum::edition1
