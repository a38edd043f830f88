#pragma once

#include "engine/script_vocabulary.h"

#include <QStringList>

namespace plum::kit {

// What `plumkit sheet` is asked for.
struct SheetOptions
{
    QString path; // of a script, or of an app's folder
    bool asJson = false;
    bool wantsHelp = false;
};

// `problem` says what is wrong with the arguments; it stays empty when nothing is.
SheetOptions readSheetOptions(const QStringList &arguments, QString &problem);

// Prints what the script may do and returns the exit status: 0, or 2 when it cannot be read.
int printSheet(const SheetOptions &options, const ScriptVocabulary &vocabulary);

} // namespace plum::kit
