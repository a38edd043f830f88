#include "library/single_instance.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

TEST(SingleInstance, aSecondStartInTheSameFolderIsRefused)
{
    const QTemporaryDir folder;
    SingleInstance first(folder.path());
    SingleInstance second(folder.path());
    EXPECT_TRUE(first.claim());
    EXPECT_FALSE(second.claim());
}

TEST(SingleInstance, anotherFolderHasALauncherOfItsOwn)
{
    const QTemporaryDir folder;
    const QTemporaryDir other;
    SingleInstance first(folder.path());
    SingleInstance second(other.path());
    EXPECT_TRUE(first.claim());
    EXPECT_TRUE(second.claim());
}

TEST(SingleInstance, aClaimEndsWithItsProcess)
{
    const QTemporaryDir folder;
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        SingleInstance other(folder.path());
        const char claimed = other.claim() ? 'y' : 'n';
        if (write(report[1], &claimed, 1) != 1)
            _exit(1);
        pause();
        _exit(0);
    }
    char claimed = 0;
    ASSERT_EQ(read(report[0], &claimed, 1), 1);
    EXPECT_EQ(claimed, 'y');
    SingleInstance mine(folder.path());
    EXPECT_FALSE(mine.claim());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(mine.claim());
}

} // namespace plum
