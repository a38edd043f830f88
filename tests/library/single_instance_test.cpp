#include "library/single_instance.h"

#include "library/library_bench.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A program folder by one of its names.
struct Place
{
    explicit Place(const QString &folder)
        : m_system(createPlatform(folder + u"/plum"_s))
        , folders(m_system->paths())
    {
    }

private:
    std::unique_ptr<Platform> m_system;

public:
    AppFolders folders;
};

// The rights of everybody else, whatever folder they come to.
class OtherUser
{
public:
    OtherUser()
        : m_isRoot(geteuid() == 0)
        , isReady(!m_isRoot || seteuid(65534) == 0)
    {
    }
    ~OtherUser()
    {
        if (m_isRoot && seteuid(0) != 0)
            std::abort();
    }
    Q_DISABLE_COPY_MOVE(OtherUser)

private:
    const bool m_isRoot;

public:
    const bool isReady;
};

} // namespace

TEST(SingleInstance, aSecondStartInTheSameFolderIsRefused)
{
    const recording::ProgramFolder folder;
    const Place place(folder.path());
    SingleInstance first(place.folders);
    SingleInstance second(place.folders);
    EXPECT_TRUE(first.claim());
    EXPECT_FALSE(second.claim());
}

TEST(SingleInstance, anotherFolderHasALauncherOfItsOwn)
{
    const recording::ProgramFolder folder;
    const recording::ProgramFolder other;
    const Place place(folder.path());
    const Place otherPlace(other.path());
    SingleInstance first(place.folders);
    SingleInstance second(otherPlace.folders);
    EXPECT_TRUE(first.claim());
    EXPECT_TRUE(second.claim());
}

TEST(SingleInstance, theClaimIsTheFoldersNotThePaths)
{
    const recording::ProgramFolder folder;
    const recording::ProgramFolder links;
    ASSERT_TRUE(QFile::link(folder.path(), links.path() + u"/linked"_s));
    const Place place(folder.path());
    const Place linked(links.path() + u"/linked"_s);
    SingleInstance first(place.folders);
    SingleInstance second(linked.folders);
    EXPECT_TRUE(first.claim());
    EXPECT_FALSE(second.claim());
}

TEST(SingleInstance, withoutAHomeThereIsOneLauncherAFolderToo)
{
    const recording::ProgramFolder folder;
    const QByteArray home = qgetenv("HOME");
    const QByteArray cache = qgetenv("XDG_CACHE_HOME");
    qputenv("HOME", "/proc/none");
    qunsetenv("XDG_CACHE_HOME");
    const Place place(folder.path());
    SingleInstance first(place.folders);
    SingleInstance second(place.folders);
    EXPECT_TRUE(first.claim());
    EXPECT_FALSE(second.claim());
    qputenv("HOME", home);
    if (!cache.isNull())
        qputenv("XDG_CACHE_HOME", cache);
}

TEST(SingleInstance, aFolderThatCannotBeWrittenIsClaimedInTheRuntimeFolder)
{
    const recording::ProgramFolder folder;
    const recording::ProgramFolder runtime;
    const recording::ProgramFolder links;
    ASSERT_TRUE(QFile::link(folder.path(), links.path() + u"/linked"_s));
    // Another user passes through it, also one of the owner's group.
    QFile::setPermissions(links.path(), QFile::permissions(links.path()) | QFile::ExeGroup | QFile::ExeOther);
    const QByteArray runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    const auto closed = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::ExeOther;
    QFile::setPermissions(folder.path(), closed);
    // It has to be the user's own.
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0) {
        ASSERT_EQ(chown(QFile::encodeName(runtime.path()).constData(), nobody, nobody), 0);
    }
    {
        const OtherUser user;
        ASSERT_TRUE(user.isReady);
        const Place place(folder.path());
        const Place linked(links.path() + u"/linked"_s);
        const Place other(links.path());
        SingleInstance first(place.folders);
        SingleInstance second(linked.folders);
        SingleInstance ofAnotherFolder(other.folders);
        EXPECT_TRUE(first.claim());
        EXPECT_FALSE(second.claim());
        EXPECT_EQ(second.holder(), getpid());
        EXPECT_TRUE(ofAnotherFolder.claim());
    }
    QFile::setPermissions(folder.path(), closed | QFile::WriteOwner);
    EXPECT_FALSE(QFile::exists(folder.path() + u"/config"_s));
    EXPECT_FALSE(QDir(runtime.path()).isEmpty());
    if (runtimeBefore.isNull())
        qunsetenv("XDG_RUNTIME_DIR");
    else
        qputenv("XDG_RUNTIME_DIR", runtimeBefore);
}

TEST(SingleInstance, aClaimEndsWithItsProcess)
{
    const recording::ProgramFolder folder;
    const Place place(folder.path());
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        SingleInstance other(place.folders);
        const char claimed = other.claim() ? 'y' : 'n';
        if (write(report[1], &claimed, 1) != 1)
            _exit(1);
        pause();
        _exit(0);
    }
    char claimed = 0;
    ASSERT_EQ(read(report[0], &claimed, 1), 1);
    EXPECT_EQ(claimed, 'y');
    SingleInstance mine(place.folders);
    EXPECT_FALSE(mine.claim());
    EXPECT_EQ(mine.holder(), child);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(mine.claim());
}

} // namespace plum
