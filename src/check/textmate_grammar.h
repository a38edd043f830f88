#pragma once

#include "engine/script_vocabulary.h"

namespace plum {

// A TextMate grammar of both editions, as JSON: what editors colour scripts by before a language server says
// more. It knows the words of the tables, so that a word that there is not stays without colour.
QString textMateGrammar(const ScriptVocabulary &vocabulary);

} // namespace plum
