#pragma once

#include "engine/script_vocabulary.h"

namespace plum {

// All commands of both editions as a page of Markdown: how each is written, its sentence, its fields.
QString commandReference(const ScriptVocabulary &vocabulary);

} // namespace plum
