#pragma once

#include <QStringList>

namespace plum::kit {

// The commands of plumkit that are about the launcher and its library: those of the program folder that
// `programPath`, as plumkit was called, is in. All return the exit status: 0 when it is done or asked for, 1
// when it cannot be, 2 when the arguments are unusable.

// Has the launcher ask what to do with a package or a script. It is started where none runs.
int openFile(const char *programPath, const QStringList &arguments);

// Has the launcher come forward, run an app, and the like.
int tellLauncher(const char *programPath, const QStringList &arguments);

// Copies the apps and settings of another program folder into the library. No launcher may run on it.
int adopt(const char *programPath, const QStringList &arguments);

} // namespace plum::kit
