#include "store/byte_server.h"
#include "store/win_http_down.h"
#include "support/recording/recording_platform.h"

#include <QDir>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::WinHttpDown;
using Then = ByteServer::Then;

namespace {

// A downloader, the server it talks to and the folder it writes to.
class Bench
{
public:
    Bench() { renew(); }

    // Another downloader, as in the next run of the program.
    void renew()
    {
        downloader = std::make_unique<WinHttpDown>(m_paths, m_codec);
        QObject::connect(downloader.get(), &WinHttpDown::Status, [this](int code) { codes += code; });
        QObject::connect(downloader.get(), &WinHttpDown::Progress,
            [this](float percent, const QString &total, const QString &done, const QString &speed) {
                percents += percent;
                texts = {total, done, speed};
            });
        downloader->setTarget(QString(folder.filePath(u"a.wfp"_s)).replace(u'/', u'\\'));
        downloader->setUrl(server.url(u"a.wfp"_s));
    }

    bool waitFor(const std::function<bool()> &condition)
    {
        QDeadlineTimer deadline(20000);
        while (!condition() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        return condition();
    }

    // Starts and waits for the end; the codes in between are the result.
    QList<int> run()
    {
        codes.clear();
        downloader->GetStart();
        EXPECT_TRUE(waitFor([this] { return !downloader->isBusy(); }));
        return codes;
    }

    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    std::optional<QByteArray> content(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
    }

    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    ByteServer server;
    QList<int> codes;
    QList<float> percents;
    QStringList texts; // total, done, speed

private:
    plum::recording::RecordingPaths m_paths;
    plum::recording::RecordingTextCodec m_codec;

public:
    std::unique_ptr<WinHttpDown> downloader;
};

const QList<int> completed{1, 2, 3, 9};

QByteArray ok(const QByteArray &body)
{
    return httpAnswer("200 OK", {"Content-Length: " + QByteArray::number(body.size())}, body);
}

QByteArray noise(qsizetype size)
{
    QRandomGenerator random(9);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.generate());
    return bytes;
}

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
        QObject::connect(bench.downloader.get(), &WinHttpDown::Status, [&](int now) {
            if (now == code)
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
        QObject::connect(bench.downloader.get(), &WinHttpDown::Status, [&](int now) {
            if (now == code)
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

TEST(WinHttpDown, ShowsAHundredPercentWithoutALength)
{
    Bench bench;
    bench.server.answer({httpAnswer("200 OK", {}, "content")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.percents.front(), 100.0F);
    EXPECT_EQ(bench.texts[0], u"1 bytes"_s);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "content");
}

TEST(WinHttpDown, AnEmptyBodyIsAnEmptyFile)
{
    Bench bench;
    bench.server.answer({ok({})});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.files(), QStringList{u"a.wfp"_s});
    EXPECT_EQ(bench.content(u"a.wfp"_s), QByteArray());
    EXPECT_TRUE(bench.percents.isEmpty());
}

TEST(WinHttpDown, FindsTheLengthInAnyLetterCase)
{
    Bench bench;
    bench.server.answer({httpAnswer("200 OK", {"cONTENT-lENGTH: 2048"}, QByteArray(2048, 'x'))});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.texts[0], u"2.00 KB"_s);
}

TEST(WinHttpDown, UnderstandsAChunkedAnswer)
{
    Bench bench;
    bench.server.answer(
        {httpAnswer("200 OK", {"Transfer-Encoding: chunked"}, "3\r\ncon\r\n4\r\ntent\r\n0\r\n\r\n")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "content");
}

TEST(WinHttpDown, RenamesThePartialFileAfter416)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "content");
    bench.write(u"a.wfp.dl.cfg"_s, bench.server.url(u"a.wfp"_s).toUtf8());
    bench.server.serve("content");
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.server.ranges(), QList<QByteArray>{"bytes=7-"});
    EXPECT_EQ(bench.content(u"a.wfp"_s), "content");
    EXPECT_EQ(bench.files(), QStringList{u"a.wfp"_s});
}

TEST(WinHttpDown, WritesTheBodyOf200AtTheResumePosition)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "part");
    bench.write(u"a.wfp.dl.cfg"_s, bench.server.url(u"a.wfp"_s).toUtf8());
    bench.server.answer({ok("content")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "partcontent"); // kept: the range is taken for granted
}

TEST(WinHttpDown, TakesARangeThatWasNotAskedFor)
{
    Bench bench;
    bench.server.answer(
        {httpAnswer("206 Partial Content", {"Content-Range: bytes 3-6/7", "Content-Length: 4"}, "tent")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "tent");
}

TEST(WinHttpDown, Accepts302AsAnAnswerAndFollowsNothing)
{
    Bench bench;
    bench.server.answer({httpAnswer(
        "302 Found", {"Location: " + bench.server.url(u"b.wfp"_s).toUtf8(), "Content-Length: 5"}, "moved")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.server.requests.size(), 1);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "moved");
}

TEST(WinHttpDown, RefusesEveryOtherStatus)
{
    for (const QByteArray status : {"201 Created", "204 No Content", "301 Moved", "303 See Other",
             "307 Temporary", "400 Bad Request", "401 Unauthorized", "403 Forbidden", "404 Not Found",
             "500 Internal Server Error", "503 Service Unavailable"}) {
        SCOPED_TRACE(status.constData());
        Bench bench;
        bench.server.answer({httpAnswer(status, {"Location: /b", "Content-Length: 4"}, "page")});
        EXPECT_EQ(bench.run(), (QList{1, 2, 7}));
        EXPECT_EQ(bench.files(), QStringList());
    }
}

TEST(WinHttpDown, KeepsAPartialFileWhenAnAnswerIsRefused)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "part");
    bench.write(u"a.wfp.dl.cfg"_s, bench.server.url(u"a.wfp"_s).toUtf8());
    bench.server.answer({httpAnswer("500 Internal Server Error", {"Content-Length: 4"}, "page")});
    EXPECT_EQ(bench.run(), (QList{1, 2, 7}));
    EXPECT_EQ(bench.content(u"a.wfp.dl"_s), "part");
}

TEST(WinHttpDown, FailsWhenTheConnectionIsResetAndResumesAfterwards)
{
    Bench bench;
    const QByteArray content = noise(2000000);
    bench.server.serve(content, 300000);
    QList<int> codes;
    int runs = 0;
    while (codes != completed && ++runs < 30) {
        codes = bench.run();
        EXPECT_TRUE(codes == completed || codes.back() == 4);
    }
    EXPECT_GT(runs, 1);
    EXPECT_TRUE(bench.content(u"a.wfp"_s) == content);
    EXPECT_EQ(bench.files(), QStringList{u"a.wfp"_s});
}

TEST(WinHttpDown, FailsWhenTheConnectionEndsBeforeTheLengthIsReached)
{
    Bench bench;
    bench.server.answer({ok("content").chopped(3)});
    EXPECT_EQ(bench.run(), (QList{1, 2, 3, 4}));
    EXPECT_EQ(bench.files(), (QStringList{u"a.wfp.dl"_s, u"a.wfp.dl.cfg"_s}));
}

TEST(WinHttpDown, TakesNoMoreThanTheLengthSays)
{
    Bench bench;
    bench.server.answer({httpAnswer("200 OK", {"Content-Length: 3"}, "content")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "con");
}

TEST(WinHttpDown, FailsWhenTheServerStalls)
{
    for (const QByteArray &start : {QByteArray(), ok("content").chopped(3)}) {
        Bench bench;
        bench.downloader->setTransferTimeout(std::chrono::milliseconds(200));
        bench.server.answer({start, Then::Stall});
        EXPECT_EQ(bench.run().back(), 4);
    }
}

TEST(WinHttpDown, FailsWithoutAServerOrWithoutAnAnswer)
{
    Bench bench;
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const quint16 port = closed.serverPort();
    closed.close();
    bench.downloader->setUrl(u"http://127.0.0.1:%1/"_s.arg(port));
    EXPECT_EQ(bench.run(), (QList{1, 4}));

    bench.downloader->setUrl(bench.server.url(u"a.wfp"_s));
    bench.server.answer({{}, Then::Close});
    EXPECT_EQ(bench.run(), (QList{1, 4}));
    EXPECT_EQ(bench.files(), QStringList());
}

TEST(WinHttpDown, ReportsARequestThatCannotBeSent)
{
    Bench bench;
    for (const QString &url : {u""_s, u"http://"_s, u"http://a b:99999/"_s}) {
        bench.downloader->setUrl(url);
        EXPECT_EQ(bench.run(), (QList{1, 8}));
    }
}

TEST(WinHttpDown, PutsTheSchemeInFrontOfEverythingElse)
{
    Bench bench;
    bench.server.answer({ok("content")});
    bench.downloader->setUrl(u"  "_s + bench.server.url(u"a.wfp"_s).sliced(7));
    EXPECT_EQ(bench.run(), completed);
    bench.downloader->setUrl(bench.server.url(u"a.wfp"_s).replace(u"http"_s, u"HTTP"_s));
    EXPECT_EQ(bench.run(), completed);
    bench.downloader->setUrl(bench.server.url(u"a.wfp"_s).replace(u"http://"_s, u"https://"_s));
    EXPECT_NE(bench.run().back(), 9); // http://https://... leads to a server named "https"
    EXPECT_EQ(bench.server.requests.size(), 2);
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
    QObject::connect(bench.downloader.get(), &WinHttpDown::Status, [&](int code) {
        if (code == 3)
            config = bench.content(u"a.wfp.dl.cfg"_s).value_or("");
    });
    bench.run();
    EXPECT_EQ(config, url + url.back() + "      ");
}
