#pragma once

#include "platform/x11/file_paths.h"
#include "platform/x11/linux_text_codec.h"

namespace plum::recording {

// Paths of a library that is on the disk, below `programFolder`: names are found in any letter case.
inline FilePaths libraryPaths(const QString &programFolder)
{
    return FilePaths(programFolder + QStringLiteral("/plum"));
}

using LibraryTextCodec = LinuxTextCodec;

} // namespace plum::recording
