#pragma once

#include <QString>

namespace plum {

class Paths;
class ScriptFolders;
class TextCodec;

// The file operations behind the script commands. Nothing here reports an error: what cannot be done is not
// done. A path may hold either separator; what is neither missing nor a regular file is never written to.

// Writes `text` and a line end. The mode "" replaces the file, "append" adds to its end; any other mode
// writes nothing. Whether all was written.
bool WriteText(
    const QString &path, const QString &text, const QString &mode, const Paths &paths, TextCodec &codec);

// Writes `text` as it is, in place of the file or behind what it holds. A text that the system's encoding
// lacks characters for makes the file UTF-8 with its mark; one that is so already stays it. A file that is
// replaced is as before until the new one is whole. Whether all was written.
bool writeExactly(
    const QString &path, const QString &text, bool appends, const Paths &paths, TextCodec &codec);

// "delfold" deletes the folder at `path` with everything in it, provided that it lies inside the library of
// apps: the library itself and everything outside it stay. A link to a folder goes, what it points to stays.
// "addfold" makes a folder that exists already, which does nothing; kept: callers rely on it not creating
// one. The operation itself has no caller in the program, where an app that goes is moved to the trash.
void FolderOp(const QString &op, const QString &path, const Paths &paths, const ScriptFolders &folders);

} // namespace plum
