#pragma once

#include <QString>

namespace plum {

// Where this program's files are, and how its paths become the system's.
// Paths that scripts see are written with "\"; the system's separator appears only when a file is opened.
class Paths
{
public:
    virtual ~Paths() = default;

    // The folder from which the program was started, without a separator at its end (but "C:\" for a
    // drive). A symbolic link to the program counts as the program: its folder is the program folder.
    virtual QString programFolder() const = 0;

    // `path` as the system opens it. Each component that does not exist as written is looked up without
    // regard to letter case, since apps come from systems that do not tell the cases apart; where that
    // finds nothing the component stays as written.
    virtual QString toSystem(const QString &path) const = 0;

    // Whether names of files are not taken as they are: some stand for devices ("con", "lpt1.txt"), and
    // blanks and dots at a name's end are dropped.
    virtual bool interpretsNames() const = 0;

    // Whether whoever asks may read the file or folder at `systemPath`, see that it is there, or write it.
    // Where something limits that, it says so to the user itself.
    virtual bool mayRead(const QString & /*systemPath*/) const { return true; }
    virtual bool mayWrite(const QString & /*systemPath*/) const { return true; }
};

} // namespace plum
