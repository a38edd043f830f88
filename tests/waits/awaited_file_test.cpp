#include "support/temporary_files.h"
#include "support/wait_until.h"
#include "waits/awaited_file.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::AwaitedFile;
using plum::test::TemporaryFiles;

TEST(AwaitedFile, IsThereWhenItWasBefore)
{
    const TemporaryFiles files;
    AwaitedFile awaited(files.write(u"a.txt"_s, "x"), 0);
    EXPECT_TRUE(awaited.isThere(0));
}

TEST(AwaitedFile, IsSeenAtTheLatestWithTheNextLookAtTheDisk)
{
    const TemporaryFiles files;
    AwaitedFile awaited(files.folder() + u"/deep/er/a.txt"_s, 0);
    EXPECT_FALSE(awaited.isThere(0));
    files.write(u"deep/er/a.txt"_s, "x");
    EXPECT_TRUE(awaited.isThere(1000));
}
