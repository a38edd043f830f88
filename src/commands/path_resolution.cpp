#include "commands/path_resolution.h"

#include "engine/run_state.h"
#include "engine/script_folders.h"
#include "engine/text_functions.h"

namespace plum {

using namespace Qt::StringLiterals;

QString ResolvePath(const QString &path, const RunState &state, const ScriptFolders &folders)
{
    QString written = QString(path).replace(u'/', u'\\');
    if (!written.startsWith("_p"_L1))
        return written;
    const qsizetype separator = written.indexOf(u'\\');
    const QString head = written.left(separator);
    const QString rest = separator < 0 ? QString() : written.sliced(separator + 1);
    const bool parent = head == "_ppfold_"_L1;
    if (!parent && head != "_pfold_"_L1)
        return written;

    if (!state.currentKeyword.isEmpty())
        return folders.app(state.currentKeyword) + u'\\' + rest;
    QString script = state.runctx[0];
    QString folder = ParentPath(script, ParentPathMode::WithoutSeparator);
    if (parent)
        folder = ParentPath(folder, ParentPathMode::WithoutSeparator);
    return folder + u'\\' + rest;
}

} // namespace plum
