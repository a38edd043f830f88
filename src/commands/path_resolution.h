#pragma once

#include <QString>

namespace plum {

class ScriptFolders;
struct RunState;

// The path that a script means. Every "/" becomes "\". A head "_pfold_" stands for the folder of the running
// script and "_ppfold_" for the folder above that; while an app of the library runs, both stand for the
// app's own folder.
QString ResolvePath(const QString &path, const RunState &state, const ScriptFolders &folders);

} // namespace plum
