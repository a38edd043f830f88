#pragma once

#include "library/app_folders.h"
#include "store_index/index_fault.h"
#include <QString>

namespace plum {

struct IndexedPackage;

// A package as the downloader leaves it in the program folder, `<name>.wfp`.
class DownloadedPackage
{
public:
    explicit DownloadedPackage(const Paths &paths)
        : m_folders(paths)
    {
    }

    QString path(const QString &name) const;

    // Whether it is the package that the index names: `None`, `WrongSize`, or `WrongChecksum`, which it also
    // is when it cannot be read.
    IndexFault faultOf(const QString &name, const IndexedPackage &named) const;

    // Deletes the package and what its download may have left behind.
    void deleteAll(const QString &name) const;

private:
    AppFolders m_folders;
};

} // namespace plum
