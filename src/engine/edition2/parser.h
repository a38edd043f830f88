#pragma once

#include "engine/edition2/line_reader.h"
#include "engine/script_vocabulary.h"

namespace plum::edition2 {

struct Parsed
{
    Tree tree;
    QList<Mistake> mistakes; // in the order of the lines
};

// Blocks stand in each other at most so deep.
inline constexpr std::size_t deepestBlock = 200;

// Reads a script of edition 2. `vocabulary` holds the namespaces beside the language's own words. Lines end
// in LF or CR LF. What concerns parts, which may stand in other files, is found out when the script is
// linked.
Parsed parse(QStringView text, const ScriptVocabulary &vocabulary);

} // namespace plum::edition2
