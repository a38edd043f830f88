#pragma once

#include "support/recording/recording_platform.h"

namespace plum::recording {

// Paths of a library that is on the disk, below `programFolder`: the system finds names in any letter case.
inline RecordingPaths libraryPaths(const QString &programFolder)
{
    RecordingPaths paths;
    paths.folder = programFolder;
    return paths;
}

// UTF-8, whatever the code page, since the tests' texts are.
using LibraryTextCodec = RecordingTextCodec;

} // namespace plum::recording
