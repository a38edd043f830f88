#include "library/launcher_requests.h"

#include "library/library_bench.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::writeBytes;
using Kind = LauncherRequest::Kind;

namespace {

class LauncherRequestsTest : public testing::Test, protected recording::LibraryBench
{
protected:
    QString file(const QString &name) const { return folder.path() + u"/config/load/requests/"_s + name; }

    LauncherRequests requests{folders};
};

} // namespace

TEST_F(LauncherRequestsTest, nothingWasLeftAtFirst)
{
    EXPECT_TRUE(requests.take().isEmpty());
}

TEST_F(LauncherRequestsTest, whatOneLeavesAnotherTakesOnce)
{
    const LauncherRequest left{Kind::Install, u"/home/ming/下载/a b.wfp"_s};
    EXPECT_TRUE(LauncherRequests(folders).leave(left));
    EXPECT_EQ(requests.take(), QList{left});
    EXPECT_TRUE(requests.take().isEmpty());
}

TEST_F(LauncherRequestsTest, everyKindArrivesAsWhatItIs)
{
    for (const LauncherRequest &left : {LauncherRequest{Kind::Install, u"/a.wfp"_s},
             LauncherRequest{Kind::OpenScript, u"/a.wf"_s}, LauncherRequest{Kind::Run, u"note"_s},
             LauncherRequest{Kind::NewApp}, LauncherRequest{Kind::Store}, LauncherRequest{Kind::Stop}}) {
        ASSERT_TRUE(requests.leave(left));
        EXPECT_EQ(requests.take(), QList{left});
    }
}

TEST_F(LauncherRequestsTest, theOldestComesFirst)
{
    writeBytes(file(u"000000000000002-9.request"_s), "/second.wfp");
    writeBytes(file(u"000000000000001-9.run"_s), "first");
    EXPECT_EQ(requests.take(),
        QList({LauncherRequest{Kind::Run, u"first"_s}, LauncherRequest{Kind::Install, u"/second.wfp"_s}}));
}

TEST_F(LauncherRequestsTest, oneThatIsTakenBackIsGone)
{
    const auto left = requests.leave({Kind::Stop});
    ASSERT_TRUE(left);
    EXPECT_TRUE(QFile::remove(*left));
    EXPECT_TRUE(requests.take().isEmpty());
}

TEST_F(LauncherRequestsTest, aRequestThatIsStillWrittenStays)
{
    writeBytes(file(u"000000000000001-9.request.AbCdEf"_s), "/half");
    EXPECT_TRUE(requests.take().isEmpty());
    EXPECT_TRUE(QFile::exists(file(u"000000000000001-9.request.AbCdEf"_s)));
}

TEST_F(LauncherRequestsTest, whereNothingCanBeWrittenNothingIsLeft)
{
    writeBytes(folder.path() + u"/config/load/requests"_s, "a file in the folder's place");
    EXPECT_FALSE(requests.leave({Kind::Install, u"/a.wfp"_s}));
    EXPECT_TRUE(requests.take().isEmpty());
}

} // namespace plum
