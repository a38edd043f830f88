#pragma once

#include <QString>

#include <optional>

namespace plum {

class Paths;

// What a script asks of the download helper, from its one command line.
struct DownloadRequest
{
    QString url;
    QString target; // the file's full path, with "\"
    QString label; // what the window calls the download
    QString name = {}; // of the file, with "\"

    // Address, folder, file name and label; the label may be missing, and a missing or empty one is the file
    // name. Without a file name the address gives one. Nothing when there is no address.
    static std::optional<DownloadRequest> fromCommandLine(const QString &commandLine);

    // False for a name that is none, or leads out of the folder that was given.
    bool staysInFolder(const Paths &paths) const;
};

// A file name for what is at this address: the last part of its path that has a name, else the server's.
QString fileNameFor(const QString &url);

} // namespace plum
