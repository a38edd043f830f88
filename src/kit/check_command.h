#pragma once

#include "engine/script_vocabulary.h"

#include <QStringList>

namespace plum::kit {

enum class FindingFormat {
    Text,
    Json,
    Sarif,
};

// What `plumkit check` is asked for.
struct CheckOptions
{
    QStringList paths; // of files and folders; "-" is standard input
    FindingFormat format = FindingFormat::Text;
    bool wantsHelp = false;
};

// `problem` says what is wrong with the arguments; it stays empty when nothing is.
CheckOptions readCheckOptions(const QStringList &arguments, QString &problem);

// Prints what is found in the scripts and returns the exit status: 0 for nothing or hints alone, 1 for
// findings, 2 when a path cannot be read.
int checkScripts(const CheckOptions &options, const ScriptVocabulary &vocabulary);

} // namespace plum::kit
