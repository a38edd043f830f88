#pragma once

#include "engine/script_vocabulary.h"
#include "platform/platform.h"

#include <functional>

namespace plum::kit {

// Talks to an editor until it ends the talk. Returns the status of the process. `speak` is told the editor's
// locale before anything is said of a script.
int serveEditor(const ScriptVocabulary &vocabulary, const TalkFiles &files,
    const std::function<void(const QString &locale)> &speak);

} // namespace plum::kit
