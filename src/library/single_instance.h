#pragma once

#include "platform/file_claim.h"

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

private:
    const AppFolders &m_folders;
    FileClaim m_claim;
};

} // namespace plum
