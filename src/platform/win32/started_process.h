#pragma once

#include <QString>

namespace plum {

// Starts `program`, a full path, with `commandLine` as the text behind its name. `showCommand` is how its
// first window appears. The program finds libraries in `libraryFolder` too, if one is named, and whatever it
// starts does so as well. False when the system refuses.
bool startProcess(
    const QString &program, const QString &commandLine, int showCommand, const QString &libraryFolder = {});

// The full path of a program of the system's own.
QString systemProgram(const QString &fileName);

} // namespace plum
