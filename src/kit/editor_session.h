#pragma once

#include "engine/script_vocabulary.h"
#include "platform/platform.h"

namespace plum::kit {

// Talks to an editor until it ends the talk. Returns the status of the process.
int serveEditor(const ScriptVocabulary &vocabulary, const TalkFiles &files);

} // namespace plum::kit
