#include "platform/linux/starter/user_folder.h"

#include <bit>
#include <cerrno>
#include <cstdlib>
#include <err.h>
#include <sys/auxv.h>
#include <unistd.h>

using namespace plum::starter;

namespace {

// The file that was started, as it was called: by that name it knows which program is meant.
const char *calledAs()
{
    return std::bit_cast<const char *>(getauxval(AT_EXECFN));
}

std::string_view folderOf(std::string_view path)
{
    return path.substr(0, path.rfind('/'));
}

std::string_view nameOf(std::string_view path)
{
    path.remove_prefix(path.rfind('/') + 1);
    return path;
}

// By the prefix in whose bin/ this program lies.
Installation installation()
{
    char program[PATH_MAX];
    char prefix[PATH_MAX];
    if (!realpath(calledAs(), program) || !realpath((Path(folderOf(program)) / "..").text(), prefix))
        err(EXIT_FAILURE, "cannot find where Plum is installed");
    return {Path(prefix) / PLUM_INSTALLED_FOLDER, Path(prefix) / "share/plum/apps"};
}

Path userFolder()
{
    const char *data = getenv("XDG_DATA_HOME");
    if (data && *data == '/')
        return Path(data) / "plum";
    const char *home = getenv("HOME");
    return Path(home ? home : "") / ".local/share/plum";
}

// Returns only where there is nothing that could be started; with the status to end with then.
int start(Path program, char **arguments)
{
    arguments[0] = program.text();
    execv(program.text(), arguments);
    constexpr int notFound = 127; // as shells say it
    constexpr int notStarted = 126;
    const int status = errno == ENOENT ? notFound : notStarted;
    warn("cannot start %s", program.text());
    return status;
}

} // namespace

// Starts the installed Plum in the user's own folder and, at the first start, makes that folder. Later starts
// find everything there. Called plumkit it starts that.
int main(int argc, char **argv)
{
    const char *const program = nameOf(calledAs()) == "plumkit" ? "plumkit" : "plum";
    program_invocation_short_name = const_cast<char *>(program);

    // No question about the program itself needs a library.
    if (argc > 1 && argv[1] == std::string_view("--version")) {
        argv[2] = nullptr;
        return start(installation().programs / program, argv);
    }

    const UserFolder folder(userFolder());
    if (!folder.isComplete(program)) {
        const Installation installed = installation();
        if (!folder.complete(installed)) {
            // A script still runs where nothing can be kept, but nobody keeps anything where Plum lies.
            if (access(installed.programs.text(), W_OK) == 0) {
                warnx("there is no library in %s, and none can be where the program lies.", folder.name());
                return EXIT_FAILURE;
            }
            warnx("there is no library in %s; starting without one.", folder.name());
            return start(installed.programs / program, argv);
        }
    }
    return start(folder.program(program), argv);
}
