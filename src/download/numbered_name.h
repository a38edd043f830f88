#pragma once

#include <QString>

namespace plum {

// `path` with "(n)" before its extension: "C:\d\a(2).wfp". Empty when the path is blank or has no "\".
// The extension begins at the last "." of the whole path, even when a folder has it: "C:\d.x\a" gives
// "C:\d.x\a(1).x\a"; kept: names made before are found again.
QString NumberedName(const QString &path, int n);

} // namespace plum
