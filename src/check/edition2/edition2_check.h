#pragma once

#include "check/findings/app_files.h"
#include "check/findings/line_transcript.h"
#include "engine/edition2/parser.h"
#include "engine/script_vocabulary.h"

namespace plum::edition2 {

// What is kept of a line until it changes.
struct LineRecord
{
    bool isRead = false;
    ParsedLine parsed = {}; // as it stands in the script
    LineTranscript transcript = {};

    // Reads `text`, or moves what was read of it to a line.
    void place(const QString &text, int number, const ScriptVocabulary &vocabulary);
};

// What can be known about a script of edition 2 before it runs: what its parser and linker say, and what
// follows its variables and files. `memory` holds what was known of its lines, and of other lines, before.
void check(const QStringList &lines, const ScriptVocabulary &vocabulary, const AppFiles &files,
    NameTable &names, LineMemory<LineRecord> &memory, Report &report);

} // namespace plum::edition2
