#pragma once

#include "check/edition1/script_line.h"
#include "check/findings/app_files.h"
#include "check/findings/line_transcript.h"
#include "engine/script_vocabulary.h"

namespace plum::edition1 {

// What is kept of a line until it changes.
struct LineRecord
{
    bool isRead = false;
    std::optional<ScriptLine> line = {}; // nothing for comments and empty lines
    bool callsCommand = false; // some namespace's, by a head that is whole
    LineTranscript transcript = {};
};

// What can be known about the lines of an edition-1 script before they run. `memory` holds what was known of
// them, and of other lines, before.
void check(const QStringList &lines, const ScriptVocabulary &vocabulary, const AppFiles &files,
    NameTable &names, LineMemory<LineRecord> &memory, Report &report);

} // namespace plum::edition1
