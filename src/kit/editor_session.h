#pragma once

#include "engine/script_vocabulary.h"

namespace plum::kit {

// Talks to an editor on standard input and output until it ends the talk. Returns the status of the process.
int serveEditor(const ScriptVocabulary &vocabulary);

} // namespace plum::kit
