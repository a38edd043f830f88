#pragma once

#include <QString>
#include <QStringView>

namespace plum {

// What a keyword becomes: the name of a folder. One rule for every way in which an app gets its name; apps
// that are there already are listed and run under whatever name they have.
enum class KeywordFault {
    None,
    Empty,
    Forbidden, // one of \ / : * ? " < | >, a control character, or "." and ".." as a whole
    Device, // stands for a device on this system ("con", "lpt1.txt")
    EndIsLost, // ends in a blank or a dot, which this system drops
    TooLong, // more than 255 bytes
};

// What a system makes of names of files. Libraries travel, but only where a name is lost does it matter.
enum class FileNames {
    Kept, // any name is a file's
    Interpreted, // some are devices, and blanks and dots at the end are dropped
};

KeywordFault keywordFault(QStringView keyword, FileNames names);

// What the user is told; empty for none.
QString keywordMessage(KeywordFault fault);

// Whether `keyword` is the plain name of a folder, whatever made it: nothing that leads out of the library.
bool isFolderName(QStringView keyword);

} // namespace plum
