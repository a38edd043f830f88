#pragma once

#include "platform/linux/starter/path.h"

#include <string_view>

namespace plum::starter {

// Where an installed Plum lies; nothing is ever written there.
struct Installation
{
    Path programs;
    Path starterApps;
};

// The user's own folder, which becomes the program folder by the links to the programs that lie in it.
class UserFolder
{
public:
    explicit UserFolder(const Path &folder)
        : m_folder(folder)
    {
    }

    const char *name() const { return m_folder.text(); }
    Path program(std::string_view name) const { return m_folder / name; }

    // Whether this program can be started there with all that it needs.
    bool isComplete(std::string_view program) const;

    // Makes what is missing: the links, and the starter apps where there is no folder of apps. Whatever is
    // there stays, but for links that lead nowhere. On failure says the reason on standard error and returns
    // false.
    bool complete(const Installation &installation) const;

private:
    bool makeApps(const Path &starterApps) const;

    Path m_folder;
};

} // namespace plum::starter
