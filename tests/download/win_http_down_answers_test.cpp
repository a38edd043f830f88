#include "download/download_bench.h"

#include <QTcpServer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::WinHttpDown;
using Bench = DownloadBench;
using Then = ByteServer::Then;

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

TEST(WinHttpDown, KeepsABodyThatCameCompressedAsItCame)
{
    Bench bench;
    const QByteArray body = QByteArray::fromHex("1f8b08000000000000034bce07000e0f5d2e02000000");
    bench.server.answer({httpAnswer(
        "200 OK", {"Content-Encoding: gzip", "Content-Length: " + QByteArray::number(body.size())}, body)});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.content(u"a.wfp"_s), body);
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

TEST(WinHttpDown, FollowsARedirectionAndSavesWhatIsThere)
{
    for (const QByteArray status :
        {"301 Moved", "302 Found", "303 See Other", "307 Temporary", "308 Permanent"}) {
        SCOPED_TRACE(status.constData());
        Bench bench;
        bench.server.answer({httpAnswer(status, {"Location: /b.wfp", "Content-Length: 5"}, "moved")});
        bench.server.answer({ok("content")});
        EXPECT_EQ(bench.run(), completed);
        EXPECT_EQ(bench.server.ranges(), (QList<QByteArray>{"bytes=0-", "bytes=0-"}));
        EXPECT_TRUE(bench.server.requests[1].startsWith("GET /b.wfp "));
        EXPECT_EQ(bench.content(u"a.wfp"_s), "content");
        EXPECT_EQ(bench.files(), QStringList{u"a.wfp"_s});
    }
}

TEST(WinHttpDown, GoesOnAfterARedirectionWhereThePartialFileEnds)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "cont");
    bench.write(u"a.wfp.dl.cfg"_s, bench.server.url(u"a.wfp"_s).toUtf8());
    bench.server.answer({httpAnswer("302 Found", {"Location: /b.wfp"}, {})});
    bench.server.answer({httpAnswer("206 Partial Content", {"Content-Length: 3"}, "ent")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.server.ranges(), (QList<QByteArray>{"bytes=4-", "bytes=4-"}));
    EXPECT_EQ(bench.content(u"a.wfp"_s), "content");
}

TEST(WinHttpDown, FailsAfterTenRedirections)
{
    Bench bench;
    bench.server.answer({httpAnswer("302 Found", {"Location: /again"}, {})});
    EXPECT_EQ(bench.run(), (QList{1, 4}));
    EXPECT_EQ(bench.server.requests.size(), 11);
    EXPECT_EQ(bench.files(), QStringList());
}

TEST(WinHttpDown, A302WithoutALocationIsAnAnswer)
{
    Bench bench;
    bench.server.answer({httpAnswer("302 Found", {"Content-Length: 5"}, "moved")});
    EXPECT_EQ(bench.run(), completed);
    EXPECT_EQ(bench.content(u"a.wfp"_s), "moved");
}

TEST(WinHttpDown, ABodyThatIsCutWithoutALengthCannotBeTold)
{
    Bench bench;
    bench.server.answer({httpAnswer("200 OK", {}, "half of the con")});
    EXPECT_EQ(bench.run(), completed); // kept: whoever opens the file finds out
    EXPECT_EQ(bench.content(u"a.wfp"_s), "half of the con");
}

TEST(WinHttpDown, AHeadWithoutEndFails)
{
    Bench bench;
    bench.server.answer(
        {"HTTP/1.1 200 OK\r\n" + ("A: " + QByteArray(1000, 'x') + "\r\n").repeated(300), Then::Stall});
    EXPECT_EQ(bench.run(), (QList{1, 4}));
}

TEST(WinHttpDown, EndsAtItsLimitAndKeepsNothing)
{
    for (const QByteArray &answer : {ok(noise(1001)), httpAnswer("200 OK", {}, noise(1001))}) {
        Bench bench;
        bench.downloader->setLargest(1000);
        bench.server.answer({answer});
        EXPECT_EQ(bench.run().back(), 4);
        EXPECT_EQ(bench.files(), QStringList());
    }
    Bench bench;
    bench.downloader->setLargest(1000);
    bench.server.answer({ok(noise(1000))});
    EXPECT_EQ(bench.run(), completed);
}

TEST(WinHttpDown, WhatIsThereFromBeforeCountsForTheLimit)
{
    Bench bench;
    bench.write(u"a.wfp.dl"_s, "01234");
    bench.write(u"a.wfp.dl.cfg"_s, bench.server.url(u"a.wfp"_s).toUtf8());
    bench.downloader->setLargest(9);
    bench.server.serve("0123456789");
    EXPECT_EQ(bench.run().back(), 4);
    EXPECT_EQ(bench.files(), QStringList());
}

TEST(WinHttpDown, RefusesEveryOtherStatus)
{
    for (const QByteArray status : {"201 Created", "204 No Content", "301 Moved", "303 See Other",
             "307 Temporary", "400 Bad Request", "401 Unauthorized", "403 Forbidden", "407 Proxy",
             "404 Not Found", "500 Internal Server Error", "503 Service Unavailable"}) {
        SCOPED_TRACE(status.constData());
        Bench bench;
        bench.server.answer({httpAnswer(status, {"Content-Length: 4"}, "page")});
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
