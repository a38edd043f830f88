#pragma once

#include "library/app_folders.h"

#include <QStringList>

namespace plum {

class Paths;
class TextCodec;

// `config\load\config.txt`: the apps' keywords, one a line, in the order of the launcher's list.
class AppListFile
{
public:
    AppListFile(const Paths &paths, TextCodec &codec)
        : m_paths(paths)
        , m_folders(paths)
        , m_codec(codec)
    {
    }

    // The keywords in their saved order. When the file is missing, empty or begins with a blank line, the
    // folders of the library that the file does not name follow, and blank lines are left out.
    QStringList load() const;

    // Replaces the whole file. A save that fails is silent and leaves the old file.
    void ConfigSave(const QStringList &keywords);

private:
    const Paths &m_paths;
    AppFolders m_folders;
    TextCodec &m_codec;
};

// Appends the lines of `file` (a path with "\") to `list`; a file that cannot be read leaves it unchanged.
void LoadLinesIntoList(const QString &file, QStringList &list, const Paths &paths, TextCodec &codec);

// What `config.txt` holds for these keywords: each followed by CR LF, and a single CR LF for none.
QString configText(const QStringList &keywords);

// Appends the names of the folders in `folder`, by name without regard to letter case. Plain files, "." and
// ".." are left out.
void ListSubfolders(QStringList &list, const QString &folder, const Paths &paths);

} // namespace plum
