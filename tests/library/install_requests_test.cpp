#include "library/install_requests.h"

#include "library/library_bench.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::writeBytes;

namespace {

class InstallRequestsTest : public testing::Test, protected recording::LibraryBench
{
protected:
    QString file(const QString &name) const { return folder.path() + u"/config/load/requests/"_s + name; }

    InstallRequests requests{folders};
};

} // namespace

TEST_F(InstallRequestsTest, nothingWasLeftAtFirst)
{
    EXPECT_EQ(requests.take(), QStringList());
}

TEST_F(InstallRequestsTest, whatOneLeavesAnotherTakesOnce)
{
    EXPECT_TRUE(InstallRequests(folders).leave(u"/home/ming/下载/a b.wfp"_s));
    EXPECT_EQ(requests.take(), QStringList(u"/home/ming/下载/a b.wfp"_s));
    EXPECT_EQ(requests.take(), QStringList());
}

TEST_F(InstallRequestsTest, theOldestComesFirst)
{
    writeBytes(file(u"000000000000002-9.request"_s), "/second.wfp");
    writeBytes(file(u"000000000000001-9.request"_s), "/first.wfp");
    EXPECT_EQ(requests.take(), QStringList({u"/first.wfp"_s, u"/second.wfp"_s}));
}

TEST_F(InstallRequestsTest, aRequestThatIsStillWrittenStays)
{
    writeBytes(file(u"000000000000001-9.request.AbCdEf"_s), "/half");
    EXPECT_EQ(requests.take(), QStringList());
    EXPECT_TRUE(QFile::exists(file(u"000000000000001-9.request.AbCdEf"_s)));
}

TEST_F(InstallRequestsTest, whereNothingCanBeWrittenNothingIsLeft)
{
    writeBytes(folder.path() + u"/config/load/requests"_s, "a file in the folder's place");
    EXPECT_FALSE(requests.leave(u"/a.wfp"_s));
    EXPECT_EQ(requests.take(), QStringList());
}

} // namespace plum
