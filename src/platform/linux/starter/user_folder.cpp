#include "platform/linux/starter/user_folder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <err.h>
#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

namespace plum::starter {

namespace {

constexpr std::string_view downloadHelper = "config/module/download/download.exe";
constexpr std::string_view netHelpers = "config/module/net";

// Ends when it goes out of scope.
class OpenFile
{
public:
    OpenFile(const Path &path, int flags, mode_t mode = 0)
        : m_descriptor(open(path.text(), flags | O_CLOEXEC, mode))
    {
    }
    ~OpenFile() { close(); }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    int descriptor() const { return m_descriptor; }

    // False when what was written has not arrived after all, as a file system of another machine may say.
    bool close()
    {
        const bool isClosed = m_descriptor < 0 || ::close(m_descriptor) == 0;
        m_descriptor = -1;
        return isClosed;
    }

private:
    int m_descriptor;
};

class OpenFolder
{
public:
    explicit OpenFolder(const Path &path)
        : m_stream(opendir(path.text()))
    {
    }
    ~OpenFolder()
    {
        if (m_stream)
            closedir(m_stream);
    }
    OpenFolder(const OpenFolder &) = delete;
    OpenFolder &operator=(const OpenFolder &) = delete;

    bool isOpen() const { return m_stream; }

    // The next name in there; nothing at the end, or at an error that errno then names.
    const char *next()
    {
        errno = 0;
        while (const dirent *entry = readdir(m_stream)) {
            const std::string_view name = entry->d_name;
            if (name != "." && name != "..")
                return entry->d_name;
        }
        return nullptr;
    }

private:
    DIR *m_stream;
};

bool cannot(const char *what, const Path &place)
{
    warn("cannot %s %s", what, place.text());
    return false;
}

bool exists(const Path &place)
{
    return access(place.text(), F_OK) == 0;
}

// Also a link that leads nowhere.
bool isTaken(const Path &place)
{
    struct stat facts;
    return lstat(place.text(), &facts) == 0;
}

bool isFolder(const Path &place)
{
    struct stat facts;
    return stat(place.text(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

// With all those on the way from the root.
bool makeFolders(const Path &folder)
{
    const std::string_view whole = folder.text();
    for (std::size_t end = 0; end < whole.size();) {
        end = whole.find('/', end + 1);
        const Path part(whole.substr(0, end));
        constexpr mode_t byUmask = 0777;
        if (mkdir(part.text(), byUmask) != 0) {
            const int error = errno;
            if (!isFolder(part)) {
                errno = error == EEXIST ? ENOTDIR : error;
                return cannot("make", part);
            }
        }
    }
    return true;
}

// Also over a link that leads nowhere, never over anything else.
bool makeLink(const Path &file, const Path &place)
{
    if (exists(place) || symlink(file.text(), place.text()) == 0)
        return true;
    if (errno != EEXIST)
        return cannot("make", place);
    // In one step, so that another start always finds a link.
    char number[16];
    std::snprintf(number, sizeof number, ".%d", getpid());
    char fresh[PATH_MAX + sizeof number];
    std::snprintf(fresh, sizeof fresh, "%s%s", place.text(), number);
    if (symlink(file.text(), fresh) != 0)
        return cannot("make", Path(fresh));
    if (rename(fresh, place.text()) == 0)
        return true;
    cannot("replace", place);
    unlink(fresh);
    return false;
}

bool copyContent(const OpenFile &from, const OpenFile &to)
{
    char piece[16 * 1024];
    for (;;) {
        const ssize_t length = read(from.descriptor(), piece, sizeof piece);
        if (length <= 0)
            return length == 0;
        for (ssize_t written = 0; written < length;) {
            const ssize_t step
                = write(to.descriptor(), piece + written, static_cast<std::size_t>(length - written));
            if (step < 0)
                return false;
            written += step;
        }
    }
}

bool copyFile(const Path &from, const Path &to, mode_t mode)
{
    const OpenFile source(from, O_RDONLY);
    if (source.descriptor() < 0)
        return cannot("read", from);
    OpenFile target(to, O_WRONLY | O_CREAT | O_EXCL, mode | S_IWUSR);
    if (target.descriptor() < 0 || !copyContent(source, target) || !target.close())
        return cannot("write", to);
    return true;
}

// The copy is its owner's to change, whatever the rights of what is copied.
bool copyFolder(const Path &from, const Path &to, mode_t mode)
{
    OpenFolder folder(from);
    if (!folder.isOpen())
        return cannot("read", from);
    if (mkdir(to.text(), mode | S_IRWXU) != 0)
        return cannot("make", to);
    while (const char *name = folder.next()) {
        const Path source = from / name;
        struct stat facts;
        if (stat(source.text(), &facts) != 0)
            return cannot("read", source);
        constexpr mode_t rights = 0777;
        const bool isCopied = S_ISDIR(facts.st_mode) ? copyFolder(source, to / name, facts.st_mode & rights)
                                                     : copyFile(source, to / name, facts.st_mode & rights);
        if (!isCopied)
            return false;
    }
    return errno == 0 || cannot("read", from);
}

void removeFolder(const char *folder)
{
    constexpr int descriptors = 8;
    nftw(
        folder, [](const char *file, const struct stat *, int, FTW *) { return std::remove(file); },
        descriptors, FTW_DEPTH | FTW_PHYS);
}

} // namespace

bool UserFolder::isComplete(std::string_view program) const
{
    return access((m_folder / program).text(), X_OK) == 0 && exists(m_folder / netHelpers)
        && exists(m_folder / downloadHelper);
}

bool UserFolder::complete(const Installation &installation) const
{
    const auto link
        = [&](std::string_view name) { return makeLink(installation.programs / name, m_folder / name); };
    // The folder of downloads is the user's, so that folder's one program has a link of its own. The link to
    // the launcher comes last: a start that was interrupted is gone on with by the next.
    return makeFolders(m_folder / "config/load") && makeFolders(m_folder / "config/module/download")
        && link(downloadHelper) && link(netHelpers) && makeApps(installation.starterApps) && link("plumkit")
        && link("plum");
}

// In one step, so that a first start that is interrupted does not leave half of them for good.
bool UserFolder::makeApps(const Path &starterApps) const
{
    const Path apps = m_folder / "config/apps";
    if (isTaken(apps))
        return true;
    Path unfinished = m_folder / "config/.apps.XXXXXX";
    if (!mkdtemp(unfinished.text()))
        return cannot("make", unfinished);
    const Path copied = unfinished / "apps";
    constexpr mode_t forAll = 0755;
    const bool isCopied = copyFolder(starterApps, copied, forAll);
    // Where another first start has been faster, its apps stay.
    const bool isThere = isCopied && (rename(copied.text(), apps.text()) == 0 || isTaken(apps));
    if (isCopied && !isThere)
        cannot("make", apps);
    removeFolder(unfinished.text());
    return isThere;
}

} // namespace plum::starter
