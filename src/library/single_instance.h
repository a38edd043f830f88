#pragma once

#include "platform/file_claim.h"

#include <optional>

namespace plum {

class AppFolders;

// One launcher at a time for each program folder, by whatever path it is called. The claim ends with this
// object, and with the process however it ends.
class SingleInstance
{
public:
    explicit SingleInstance(const AppFolders &folders)
        : m_folders(folders)
    {
    }

    // False when another launcher holds the claim.
    bool claim();

    // The process of the launcher that runs, where that can be known. Claims nothing.
    std::optional<qint64> running() const;

    // The process that holds the claim which `claim` has tried to get, where that can be known.
    std::optional<qint64> holder() const;

private:
    const AppFolders &m_folders;
    FileClaim m_claim;
    QString m_file; // that is claimed
};

} // namespace plum
