#pragma once

#include "engine/script_vocabulary.h"

#include <QStringList>

namespace plum::kit {

// What `plumkit pack` and `plumkit new` are asked for.
struct AppOptions
{
    QString name; // the folder to pack, the keyword to make
    QString place; // the file to write, the folder to make it in; empty for the usual one
    bool wantsHelp = false;
};

// One argument, and the option `--output FILE` or `--in FOLDER` that names the place. `problem` says what is
// wrong with them; it stays empty when nothing is.
AppOptions readAppOptions(const QStringList &arguments, const QString &placeOption, QString &problem);

// Writes the app's package. Returns the exit status: 0 when it is there, 1 when a script of it has an error,
// 2 when it cannot be made.
int packFolder(const AppOptions &options, const ScriptVocabulary &vocabulary);

// Makes a new app. Returns the exit status: 0 when it is there, 2 when it cannot be made.
int makeNewApp(const AppOptions &options);

} // namespace plum::kit
