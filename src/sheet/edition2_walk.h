#pragma once

#include "engine/edition2/program.h"
#include "sheet/sheet.h"

namespace plum::edition2 {

// What a script of edition 2 can bring about. `load` reads the other files of the app. A script with mistakes
// does not run, and therefore does nothing; `problem` is the first of them then.
Sheet effectsOf(const QString &text, const ScriptVocabulary &vocabulary,
    const std::function<std::optional<QString>(const QString &file)> &load, QString &problem);

} // namespace plum::edition2
