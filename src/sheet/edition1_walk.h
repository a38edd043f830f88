#pragma once

#include "engine/script_vocabulary.h"
#include "sheet/sheet.h"

#include <QStringList>

namespace plum::edition1 {

// What the lines of a script of edition 1 can bring about.
Sheet effectsOf(const QStringList &lines, const ScriptVocabulary &vocabulary);

} // namespace plum::edition1
