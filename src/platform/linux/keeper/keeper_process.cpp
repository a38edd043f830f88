#include "platform/linux/keeper/keeper_process.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace plum::keeper {

namespace {

// Everything up to the end of standard input; nothing when that is not `length` bytes: the program that
// wrote it was cut short.
std::optional<std::string> readText(size_t length)
{
    std::string text;
    std::array<char, 1 << 16> buffer{};
    while (true) {
        const ssize_t got = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        text.append(buffer.data(), static_cast<size_t>(got));
    }
    if (text.size() != length)
        return {};
    return text;
}

// Whoever started this program must not wait for it, nor any file system that it was started on.
void letGo()
{
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    if (chdir("/") != 0)
        std::perror("keeper of the clipboard");
}

} // namespace

int runKeeper(int argc, char **argv, const Keeper &keeper)
{
    size_t length = 0;
    const char *end = argc == 2 ? argv[1] + std::strlen(argv[1]) : nullptr;
    if (!end || std::from_chars(argv[1], end, length).ptr != end) {
        std::fprintf(stderr, "usage: %s <bytes>, the text on standard input\n", argv[0]);
        return 2;
    }
    std::optional<std::string> text = readText(length);
    if (!text || !keeper.takeOver(*std::move(text)))
        return 1;
    // A program that did not wait for the byte has gone; the text stays all the same.
    std::signal(SIGPIPE, SIG_IGN);
    if (write(STDOUT_FILENO, "1", 1) != 1)
        std::perror("keeper of the clipboard");
    letGo();
    keeper.serve();
    return 0;
}

} // namespace plum::keeper
