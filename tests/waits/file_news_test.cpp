#include "support/temporary_files.h"
#include "support/wait_until.h"
#include "waits/file_news.h"

#include <QDir>
#include <QThread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::FileNews;
using plum::test::TemporaryFiles;
using plum::test::waitUntil;

namespace {

// Windows tells the changes of a folder apart by their times.
void letTimePass()
{
    constexpr int tick = 20; // milliseconds
    QThread::msleep(tick);
}

} // namespace

TEST(FileNews, ComeWithTheFile)
{
    const TemporaryFiles files;
    FileNews news(files.folder() + u"/a.txt"_s);
    EXPECT_TRUE(news.arrived()) << "it may have come before";
    EXPECT_FALSE(news.arrived());
    letTimePass();
    files.write(u"a.txt"_s, "x");
    EXPECT_TRUE(waitUntil([&] { return news.arrived(); }));
}

TEST(FileNews, ComeWithEachFolderOnTheWayToTheFile)
{
    const TemporaryFiles files;
    FileNews news(files.folder() + u"/deep/er/a.txt"_s);
    EXPECT_TRUE(news.arrived());
    for (const auto &folder : {u"/deep"_s, u"/deep/er"_s}) {
        letTimePass();
        ASSERT_TRUE(QDir().mkdir(files.folder() + folder));
        EXPECT_TRUE(waitUntil([&] { return news.arrived(); })) << folder.toStdString();
    }
    letTimePass();
    files.write(u"deep/er/a.txt"_s, "x");
    EXPECT_TRUE(waitUntil([&] { return news.arrived(); }));
}
