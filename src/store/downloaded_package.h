#pragma once

#include "library/app_folders.h"

#include <QByteArray>
#include <QString>

namespace plum {

// A package as the downloader leaves it in the program folder, `<name>.wfp`.
class DownloadedPackage
{
public:
    explicit DownloadedPackage(const Paths &paths)
        : m_folders(paths)
    {
    }

    QString path(const QString &name) const;

    // False when the package's SHA-256 is another one, or the package cannot be read.
    bool isGenuine(const QString &name, const QByteArray &sha256) const;

    // Deletes the package and what its download may have left behind.
    void deleteAll(const QString &name) const;

private:
    AppFolders m_folders;
};

} // namespace plum
