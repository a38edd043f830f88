#include "platform/choice/desktop_choice.h"
#include "platform/linux/platform_module.h"
#include "platform/platform.h"

#include <cstdio>
#include <cstdlib>

namespace plum {

// A program without a backend can do nothing at all, not even say where its files are.
std::unique_ptr<Platform> createPlatform(const QString &programPath)
{
    if (PlatformModule *backend = backendFor(chosenDesktop()))
        return backend->createPlatform(programPath);
    std::fputs("plum: the library of the backend (plum-x11.so or plum-wayland.so) is missing\n", stderr);
    std::_Exit(EXIT_FAILURE);
}

} // namespace plum
