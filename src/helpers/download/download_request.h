#pragma once

#include <QString>

#include <optional>

namespace plum {

// What a script asks of the download helper, from its one command line.
struct DownloadRequest
{
    QString url;
    QString target; // the file's full path, with "\"
    QString label; // what the window calls the download

    // Address, folder, file name and label; the label may be missing, and a missing or empty one is the file
    // name. Nothing when the address or the file name is.
    static std::optional<DownloadRequest> fromCommandLine(const QString &commandLine);
};

} // namespace plum
