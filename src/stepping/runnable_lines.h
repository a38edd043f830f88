#pragma once

#include "engine/script_vocabulary.h"

#include <QByteArray>
#include <QList>

namespace plum {

// The lines of a script, from 1, that a run can stand before, in their order. Comments, empty lines and what
// only closes or divides a block are none. Of a script of edition 2 with mistakes only those that are read
// all the same. A file that a script of edition 2 uses is of that edition without saying so.
QList<int> runnableLines(const QByteArray &script, const ScriptVocabulary &vocabulary, Edition atLeast);

} // namespace plum
