#include "download/download_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::WinHttpDown;
using Bench = DownloadBench;
using Then = ByteServer::Then;

namespace {

// The working folder for as long as this lives.
class InFolder
{
public:
    explicit InFolder(const QString &folder) { QDir::setCurrent(folder); }
    ~InFolder() { QDir::setCurrent(m_before); }
    Q_DISABLE_COPY_MOVE(InFolder)

private:
    QString m_before = QDir::currentPath();
};

} // namespace

TEST(WinHttpDown, DownloadsAFile)
{
    Bench bench;
    const QByteArray content = noise(3000000);
    bench.server.answer({ok(content)});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.files(), QStringList{u"a.wfp"_s});
    EXPECT_TRUE(bench.content(u"a.wfp"_s) == content);
    EXPECT_EQ(bench.percents.back(), 100.0F);
    EXPECT_TRUE(std::ranges::is_sorted(bench.percents));
    EXPECT_EQ(bench.texts[0], u"2.86 MB"_s);
    EXPECT_EQ(bench.texts[1], u"2.86 MB"_s);
}

TEST(WinHttpDown, AsksForARangeAlsoFromTheBeginningAndForNoCompression)
{
    Bench bench;
    bench.server.answer({ok("content")});
    bench.run();
    EXPECT_EQ(bench.server.ranges(), QList<QByteArray>{"bytes=0-"});
    EXPECT_EQ(bench.server.headers("accept-encoding"), QList<QByteArray>{"identity"});
    EXPECT_TRUE(bench.server.requests[0].startsWith("GET /a.wfp HTTP/1.1\r\n"));
}

TEST(WinHttpDown, SendsAndKeepsNoCookies)
{
    Bench bench;
    bench.server.answer({httpAnswer("200 OK", {"Set-Cookie: a=b; Path=/", "Content-Length: 1"}, "x")});
    bench.run();
    bench.run();
    EXPECT_EQ(bench.server.requests.size(), 2);
    EXPECT_EQ(bench.server.headers("cookie"), QList<QByteArray>());
}

TEST(WinHttpDown, ResumesAfterAPauseInAnotherRun)
{
    Bench bench;
    const QByteArray content = noise(100000);
    bench.server.answer({ok(content).chopped(60000), Then::Stall});
    bench.downloader->GetStart();
    ASSERT_TRUE(bench.waitFor([&] { return !bench.percents.isEmpty() && bench.percents.back() >= 40; }));
    bench.downloader->GetPause();
    EXPECT_EQ(bench.codes, (QList{1, 2, 3, 6}));
    EXPECT_EQ(bench.content(u"a.wfp.dl"_s), content.first(40000));
    EXPECT_EQ(bench.content(u"a.wfp.dl.cfg"_s), bench.server.url(u"a.wfp"_s).toUtf8());

    bench.renew();
    bench.server.serve(content);
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.server.ranges().back(), "bytes=40000-");
    EXPECT_TRUE(bench.content(u"a.wfp"_s) == content);
    EXPECT_EQ(bench.files(), QStringList{u"a.wfp"_s});
    EXPECT_EQ(bench.texts[0], u"97.6 KB"_s); // of the whole file, not of what was missing
}

TEST(WinHttpDown, ResumesWhenTheStoredAddressDiffersInBlanksAlone)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "01234");
    bench.write(u"a.wfp.dl.cfg"_s, "  " + bench.server.url(u"a.wfp"_s).toUtf8() + " ");
    bench.server.serve("0123456789");
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.server.ranges(), QList<QByteArray>{"bytes=5-"});
    EXPECT_EQ(bench.content(u"a.wfp"_s), "0123456789");
}

TEST(WinHttpDown, ResumesWhenItEndedInTheMiddle)
{
    Bench bench;
    const QByteArray content = noise(50000);
    bench.server.answer({ok(content).chopped(20000), Then::Stall});
    bench.downloader->GetStart();
    ASSERT_TRUE(bench.waitFor([&] { return !bench.percents.isEmpty() && bench.percents.back() >= 60; }));
    bench.renew(); // without a word to the old one
    bench.server.serve(content);
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.server.ranges().back(), "bytes=30000-");
    EXPECT_TRUE(bench.content(u"a.wfp"_s) == content);
}

TEST(WinHttpDown, LeavesThePartialFileOfAnotherAddressAlone)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "old part");
    bench.write(u"a.wfp.dl.cfg"_s, "http://elsewhere/a.wfp");
    bench.server.answer({ok("content").chopped(3), Then::Reset});
    EXPECT_EQ(bench.run(), (QList{1, 2, 3, 4}));
    EXPECT_EQ(bench.server.ranges(), QList<QByteArray>{"bytes=0-"});
    EXPECT_EQ(bench.files(),
        (QStringList{u"a(1).wfp.dl"_s, u"a(1).wfp.dl.cfg"_s, u"a.wfp.dl"_s, u"a.wfp.dl.cfg"_s}));
    EXPECT_EQ(bench.content(u"a.wfp.dl"_s), "old part");
    EXPECT_EQ(bench.content(u"a(1).wfp.dl"_s), "cont");
    EXPECT_EQ(bench.content(u"a(1).wfp.dl.cfg"_s), bench.server.url(u"a.wfp"_s).toUtf8());
}

TEST(WinHttpDown, TakesTheFirstNumberOfWhichNeitherFileExists)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "");
    bench.write(u"a(1).wfp.dl"_s, "");
    bench.write(u"a(2).wfp.dl.cfg"_s, "");
    bench.server.answer({ok("content"), Then::Stall});
    bench.downloader->GetStart();
    ASSERT_TRUE(bench.waitFor(
        [&] { return bench.content(u"a(3).wfp.dl.cfg"_s).has_value() || !bench.downloader->isBusy(); }));
    ASSERT_TRUE(bench.waitFor([&] { return !bench.downloader->isBusy(); }));
    EXPECT_EQ(bench.content(u"a.wfp"_s), "content"); // the target keeps its name
    EXPECT_FALSE(bench.files().contains(u"a(3).wfp.dl"_s));
}

TEST(WinHttpDown, StopDeletesTheConfigFileAloneAndTheNextStartIsNumbered)
{
    Bench bench;
    bench.server.answer({ok("content").chopped(3), Then::Stall});
    bench.downloader->GetStart();
    ASSERT_TRUE(bench.waitFor([&] { return !bench.percents.isEmpty(); }));
    bench.downloader->GetStop();
    EXPECT_EQ(bench.codes, (QList{1, 2, 3, 5}));
    EXPECT_EQ(bench.files(), QStringList{u"a.wfp.dl"_s});

    bench.percents.clear();
    bench.downloader->GetStart();
    ASSERT_TRUE(bench.waitFor([&] { return !bench.percents.isEmpty(); }));
    EXPECT_EQ(bench.files(), (QStringList{u"a(1).wfp.dl"_s, u"a(1).wfp.dl.cfg"_s, u"a.wfp.dl"_s}));
    EXPECT_EQ(bench.server.ranges().back(), "bytes=0-");
}

TEST(WinHttpDown, AConfigFileAloneIsLeftAloneToo)
{
    Bench bench;
    const QByteArray url = bench.server.url(u"a.wfp"_s).toUtf8();
    bench.write(u"a.wfp.dl.cfg"_s, url);
    bench.server.answer({ok("content").chopped(3), Then::Reset});
    EXPECT_EQ(bench.run(), (QList{1, 2, 3, 4}));
    EXPECT_EQ(bench.files(), (QStringList{u"a(1).wfp.dl"_s, u"a(1).wfp.dl.cfg"_s, u"a.wfp.dl.cfg"_s}));
    EXPECT_EQ(bench.content(u"a.wfp.dl.cfg"_s), url);
}

TEST(WinHttpDown, StopAndPauseDoNothingWhenIdleAndStartNothingWhenBusy)
{
    Bench bench;
    bench.downloader->GetStop();
    bench.downloader->GetPause();
    EXPECT_EQ(bench.codes, QList<int>());
    bench.server.answer({{}, Then::Stall});
    bench.downloader->GetStart();
    bench.downloader->GetStart();
    EXPECT_EQ(bench.codes, QList{1});
    bench.downloader->GetPause();
    EXPECT_EQ(bench.codes, (QList{1, 6}));
    EXPECT_EQ(bench.files(), QStringList());
}

TEST(WinHttpDown, CanBeStoppedFromItsOwnEvents)
{
    for (const int code : {1, 2, 3}) {
        Bench bench;
        bench.server.answer({ok("content")});
        QObject::connect(bench.downloader.get(), &WinHttpDown::Status, [&](plum::DownloadStatus now) {
            if (now == plum::DownloadStatus{code})
                bench.downloader->GetPause();
        });
        bench.run();
        EXPECT_EQ(bench.codes.back(), 6);
        EXPECT_EQ(bench.codes.size(), code + 1);
    }
}

TEST(WinHttpDown, CanBeDeletedFromItsOwnEvents)
{
    for (const int code : {1, 2, 3, 9}) {
        Bench bench;
        bench.server.answer({ok("content")});
        QObject::connect(bench.downloader.get(), &WinHttpDown::Status, [&](plum::DownloadStatus now) {
            if (now == plum::DownloadStatus{code})
                bench.downloader.reset();
        });
        bench.downloader->GetStart();
        EXPECT_TRUE(bench.waitFor([&] { return !bench.downloader; }));
    }
}

TEST(WinHttpDown, NumbersTheFinishedFileWhenTheTargetExists)
{
    Bench bench;
    bench.write(u"a.wfp"_s, "old");
    bench.write(u"a(1).wfp"_s, "older");
    bench.server.answer({ok("content")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "old");
    EXPECT_EQ(bench.content(u"a(1).wfp"_s), "older");
    EXPECT_EQ(bench.content(u"a(2).wfp"_s), "content");
}

TEST(WinHttpDown, ABareTargetLiesInTheWorkingFolder)
{
    Bench bench;
    const InFolder inside(bench.folder.path());
    bench.downloader->setTarget(u"b.wfp"_s);
    bench.server.answer({ok("content")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.files(), QStringList{u"b.wfp"_s});
    bench.run();
    EXPECT_EQ(bench.files(), (QStringList{u"b(1).wfp"_s, u"b.wfp"_s}));
}

TEST(WinHttpDown, ABareTargetHasANamelessPartialFileInsteadOfANumberedOne)
{
    Bench bench;
    const InFolder inside(bench.folder.path());
    bench.downloader->setTarget(u"b.wfp"_s);
    bench.write(u"b.wfp.dl"_s, "old");
    bench.server.answer({ok("content").chopped(3), Then::Reset});
    bench.run();
    EXPECT_EQ(bench.files(), (QStringList{u".dl"_s, u".dl.cfg"_s, u"b.wfp.dl"_s}));
    bench.run(); // the nameless ones are taken now
    EXPECT_EQ(bench.files(),
        (QStringList{u".dl"_s, u".dl.cfg"_s, u"b(1).wfp.dl"_s, u"b(1).wfp.dl.cfg"_s, u"b.wfp.dl"_s}));
}

TEST(WinHttpDown, ReportsAPartialFileThatCannotBeMade)
{
    Bench bench;
    bench.downloader->setTarget(QString(bench.folder.filePath(u"none/a.wfp"_s)).replace(u'/', u'\\'));
    bench.server.answer({ok("content")});
    EXPECT_EQ(bench.run(), (QList{1, 2, 10}));
}

TEST(WinHttpDown, ReportsAConfigFileThatCannotBeMade)
{
    Bench bench;
    ASSERT_TRUE(QDir(bench.folder.path()).mkdir(u"a.wfp.dl.cfg"_s));
    ASSERT_TRUE(QDir(bench.folder.path()).mkdir(u"a.wfp.dl"_s));
    for (const QString &name : {u"a(1).wfp.dl.cfg"_s, u"a(1).wfp.dl"_s})
        ASSERT_TRUE(QFile::link(bench.folder.filePath(u"none/"_s + name), bench.folder.filePath(name)));
    bench.server.answer({ok("content")});
    EXPECT_EQ(bench.run(), (QList{1, 2, 10}));
}

TEST(WinHttpDown, LeavesTheTailOfALongerStoredAddress)
{
    Bench bench;
    const QByteArray url = bench.server.url(u"a.wfp"_s).toUtf8();
    bench.write(u"a.wfp.dl"_s, "");
    bench.write(u"a.wfp.dl.cfg"_s, " " + url + "      ");
    bench.server.answer({ok("content"), Then::Stall});
    QByteArray config;
    QObject::connect(bench.downloader.get(), &WinHttpDown::Status, [&](plum::DownloadStatus status) {
        if (status == plum::DownloadStatus::Receiving)
            config = bench.content(u"a.wfp.dl.cfg"_s).value_or("");
    });
    bench.run();
    EXPECT_EQ(config, url + url.back() + "      ");
}
