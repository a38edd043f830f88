#pragma once

#include "engine/script_vocabulary.h"
#include "kit/app_commands.h"

namespace plum::kit {

// Writes the script `options.name` as one of edition 2 to `options.place`, or to standard output. Returns the
// exit status: 0 when it does the same as before, 1 when there is none that does, 2 when a file cannot be
// read or written.
int upgradeScript(const AppOptions &options, const ScriptVocabulary &vocabulary);

} // namespace plum::kit
