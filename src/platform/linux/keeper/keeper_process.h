#pragma once

#include <functional>
#include <string>

namespace plum::keeper {

// What a keeper does with its text.
struct Keeper
{
    // Owns the clipboard from here on; false when it cannot.
    std::function<bool(std::string utf8)> takeOver;
    // Serves other programs until there is no reason left to.
    std::function<void()> serve;
};

// The whole of a keeper's main(): one argument, the number of bytes of UTF-8 that stand on standard input.
// Writes one byte to standard output once it owns the clipboard. Returns the status to end with.
int runKeeper(int argc, char **argv, const Keeper &keeper);

} // namespace plum::keeper
