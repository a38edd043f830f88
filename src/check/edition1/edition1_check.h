#pragma once

#include "check/findings/app_files.h"
#include "engine/script_vocabulary.h"

namespace plum::edition1 {

// What can be known about the lines of an edition-1 script before they run.
void check(
    const QStringList &lines, const ScriptVocabulary &vocabulary, const AppFiles &files, Report &report);

} // namespace plum::edition1
