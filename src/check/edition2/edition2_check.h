#pragma once

#include "check/findings/app_files.h"
#include "engine/script_vocabulary.h"

namespace plum::edition2 {

// What can be known about a script of edition 2 before it runs: what its parser and linker say, and what
// follows its variables and files. `text` is the decoded script.
void check(const QString &text, const ScriptVocabulary &vocabulary, const AppFiles &files, Report &report);

} // namespace plum::edition2
