#pragma once

#include <QtGlobal>

namespace plum {

class ArchiveFile;

// Where an archive's central directory begins.
struct ZipDirectory
{
    enum class Problem { None, Unreadable, UnknownHeader };

    Problem problem = Problem::None;
    qint64 start = 0; // position in the file; may be none of it when the archive lies
    int count = 0; // entries
};

// Taken from the record at the archive's end. A comment hides that one; then the way leads from one local
// header to the next, and where that fails, the record is looked for backwards.
ZipDirectory findZipDirectory(ArchiveFile &archive);

} // namespace plum
