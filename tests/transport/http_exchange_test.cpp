#include "transport/http_exchange.h"

#include "download/byte_server.h"

#include <QBuffer>
#include <QEventLoop>
#include <QNetworkProxy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::HttpExchange;
using plum::testing::ByteServer;
using plum::testing::httpAnswer;
using End = HttpExchange::End;
using Then = ByteServer::Then;

namespace {

class Exchange : public testing::Test
{
protected:
    Exchange()
    {
        QObject::connect(&exchange, &HttpExchange::answered, &exchange, [this] { ++heads; });
        QObject::connect(
            &exchange, &HttpExchange::arrived, &exchange, [this](const QByteArray &piece) { body += piece; });
    }

    End run(const HttpExchange::Request &request)
    {
        QEventLoop loop;
        End how = End::Unsent;
        const auto connection = QObject::connect(&exchange, &HttpExchange::ended, &loop, [&](End end) {
            how = end;
            loop.quit();
        });
        heads = 0;
        body.clear();
        exchange.start(request);
        loop.exec();
        QObject::disconnect(connection);
        EXPECT_FALSE(exchange.isRunning());
        return how;
    }

    End get(const QString &path = u"a"_s) { return run({.url = QUrl(server.url(path))}); }

    ByteServer server;
    HttpExchange exchange;
    int heads = 0;
    QByteArray body;
};

QByteArray ok(const QByteArray &body)
{
    return httpAnswer("200 OK", {"Content-Length: " + QByteArray::number(body.size())}, body);
}

QByteArray found(const QString &where)
{
    return httpAnswer("302 Found", {"Location: " + where.toUtf8(), "Content-Length: 5"}, "moved");
}

} // namespace

TEST_F(Exchange, AsksAndGetsTheAnswer)
{
    server.answer({ok("content")});
    EXPECT_EQ(run({.url = QUrl(server.url(u"a b?c=d e#part"_s)), .headers = {{"Range", "bytes=0-"}}}),
        End::Complete);
    EXPECT_EQ(body, "content");
    EXPECT_EQ(heads, 1);
    EXPECT_EQ(exchange.answer().status(), 200);
    ASSERT_EQ(server.requests.size(), 1);
    EXPECT_TRUE(server.requests[0].startsWith("GET /a%20b?c=d%20e HTTP/1.1\r\nHost: 127.0.0.1:"))
        << server.requests[0].constData();
    EXPECT_EQ(server.headers("range"), QList<QByteArray>{"bytes=0-"});
}

TEST_F(Exchange, ARedirectionToAnotherServerLosesWhatWasMeantForTheFirst)
{
    ByteServer other;
    other.answer({ok("content")});
    server.answer({found(other.url(u"b"_s))});
    const QList<std::pair<QByteArray, QByteArray>> headers{
        {"authorization", "secret"}, {"Cookie", "secret"}, {"X-Own", "kept"}};
    EXPECT_EQ(run({.url = QUrl(server.url(u"a"_s)), .headers = headers}), End::Complete);
    EXPECT_EQ(server.headers("authorization"), QList<QByteArray>{"secret"});
    EXPECT_EQ(other.headers("authorization"), QList<QByteArray>());
    EXPECT_EQ(other.headers("cookie"), QList<QByteArray>());
    EXPECT_EQ(other.headers("x-own"), QList<QByteArray>{"kept"});
}

TEST_F(Exchange, IsCompleteWithoutWaitingForTheConnectionToEnd)
{
    server.answer({ok("content"), Then::Stall});
    EXPECT_EQ(get(), End::Complete);
    EXPECT_EQ(body, "content");
}

TEST_F(Exchange, AnEndOfChunksWithoutItsLastLineIsAnEnd)
{
    const QByteArray chunks = httpAnswer("200 OK", {"Transfer-Encoding: chunked"}, "7\r\ncontent\r\n0\r\n");
    for (const Then then : {Then::Close, Then::Reset, Then::Stall}) {
        ByteServer other;
        other.answer({chunks, then});
        EXPECT_EQ(run({.url = QUrl(other.url(u"a"_s))}), End::Complete);
        EXPECT_EQ(body, "content");
    }
}

TEST_F(Exchange, AClosedConnectionEndsEveryWaitAtOnce)
{
    const QByteArray counted = ok("content");
    const QByteArray chunked
        = httpAnswer("200 OK", {"Transfer-Encoding: chunked"}, "7\r\ncontent\r\n7\r\ncontent\r\n");
    for (const QByteArray &whole : {counted, chunked}) {
        for (qsizetype size = 0; size < whole.size(); ++size) {
            ByteServer other;
            other.answer({whole.first(size), Then::Close});
            EXPECT_EQ(run({.url = QUrl(other.url(u"a"_s))}), End::Cut) << size;
        }
    }
    server.answer({counted.chopped(2), Then::Reset});
    EXPECT_EQ(get(), End::Cut);
}

TEST_F(Exchange, FollowsTenRedirectionsAndTakesTheHeadersAlong)
{
    for (int left = 10; left > 0; --left)
        server.answer({found(u"/%1"_s.arg(left))});
    server.answer({ok("content")});
    EXPECT_EQ(run({.url = QUrl(server.url(u"a"_s)), .headers = {{"Range", "bytes=3-"}}}), End::Complete);
    EXPECT_EQ(body, "content");
    EXPECT_EQ(heads, 1);
    EXPECT_EQ(server.requests.size(), 11);
    EXPECT_EQ(server.headers("range").count("bytes=3-"), 11);
    EXPECT_TRUE(server.requests.back().startsWith("GET /1 "));
}

TEST_F(Exchange, AnEleventhRedirectionOrOneToSomewhereElseIsAstray)
{
    server.answer({found(u"/again"_s)});
    EXPECT_EQ(get(), End::Astray);
    EXPECT_EQ(server.requests.size(), 11);
    for (const QString &where : {u"file:///etc/passwd"_s, u"ftp://127.0.0.1/"_s, u"javascript:1"_s}) {
        ByteServer other;
        other.answer({found(where)});
        EXPECT_EQ(run({.url = QUrl(other.url(u"a"_s))}), End::Astray) << where.toStdString();
        EXPECT_EQ(other.requests.size(), 1);
        EXPECT_EQ(heads, 0);
    }
}

TEST_F(Exchange, ARedirectionWithoutALocationIsAnAnswer)
{
    server.answer({httpAnswer("302 Found", {"Content-Length: 5"}, "moved")});
    EXPECT_EQ(get(), End::Complete);
    EXPECT_EQ(exchange.answer().status(), 302);
    EXPECT_EQ(body, "moved");
}

TEST_F(Exchange, AHeadOf100MegabytesIsRefusedEarly)
{
    server.answer(
        {"HTTP/1.1 200 OK\r\n" + ("A: " + QByteArray(1000, 'x') + "\r\n").repeated(100'000), Then::Stall});
    EXPECT_EQ(get(), End::NotHttp);
    EXPECT_EQ(heads, 0);
}

TEST_F(Exchange, LimitsItsTimeAsAWholeAndInSilence)
{
    using namespace std::chrono_literals;
    server.answer({ok("content").chopped(1), Then::Stall});
    EXPECT_EQ(run({.url = QUrl(server.url(u"a"_s)), .silence = 100ms}), End::TooSlow);
    EXPECT_EQ(run({.url = QUrl(server.url(u"a"_s)), .whole = 100ms}), End::TooSlow);
    EXPECT_EQ(body, "conten");
}

TEST_F(Exchange, TricklingIsNoSilenceButTakesTime)
{
    using namespace std::chrono_literals;
    server.trickle("HTTP/1.1 200 OK\r\n\r\n", 20);
    EXPECT_EQ(run({.url = QUrl(server.url(u"a"_s)), .silence = 5s, .whole = 400ms}), End::TooSlow);
    EXPECT_GE(body.size(), 1);
}

TEST_F(Exchange, AddressesAndServersThatAreNone)
{
    for (const QString &address : {u""_s, u"file:///etc/passwd"_s, u"http://"_s, u"127.0.0.1/a"_s})
        EXPECT_EQ(run({.url = QUrl(address)}), End::NoAddress) << address.toStdString();
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const QString gone = u"http://127.0.0.1:%1/"_s.arg(closed.serverPort());
    closed.close();
    EXPECT_EQ(run({.url = QUrl(gone)}), End::Unreachable);
    server.answer({"220 smtp ready\r\n"});
    EXPECT_EQ(get(), End::NotHttp);
}

TEST_F(Exchange, SendsABodyAndHearsAnAnswerBeforeItsEnd)
{
    QByteArray content(3'000'000, 'x');
    QBuffer buffer(&content);
    ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
    server.answer({ok("thanks"), Then::Stall});
    EXPECT_EQ(run({.url = QUrl(server.url(u"a"_s)), .method = "POST", .body = &buffer}), End::Complete);
    EXPECT_EQ(body, "thanks");
    EXPECT_EQ(server.headers("content-length").value(0), "3000000");
}

TEST_F(Exchange, TellsAProxyTheWholeAddress)
{
    server.answer({ok("from the proxy")});
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s,
        static_cast<quint16>(QUrl(server.url({})).port()), u"user"_s, u"secret"_s});
    EXPECT_EQ(run({.url = QUrl(u"http://shop.test/a?b"_s)}), End::Complete);
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_EQ(body, "from the proxy");
    EXPECT_TRUE(server.requests[0].startsWith("GET http://shop.test/a?b HTTP/1.1\r\nHost: shop.test\r\n"));
    EXPECT_EQ(server.headers("proxy-authorization").value(0), "Basic dXNlcjpzZWNyZXQ=");
}

TEST_F(Exchange, CanBeDeletedFromEachOfItsSignals)
{
    server.answer({ok("content")});
    for (const int signal : {0, 1, 2}) {
        auto *const doomed = new HttpExchange;
        QEventLoop loop;
        QObject::connect(doomed, &QObject::destroyed, &loop, &QEventLoop::quit);
        const auto die = [doomed] { delete doomed; };
        if (signal == 0)
            QObject::connect(doomed, &HttpExchange::answered, &loop, die);
        else if (signal == 1)
            QObject::connect(doomed, &HttpExchange::arrived, &loop, die);
        else
            QObject::connect(doomed, &HttpExchange::ended, &loop, die);
        doomed->start({.url = QUrl(server.url(u"a"_s))});
        loop.exec();
    }
    EXPECT_EQ(server.requests.size(), 3);
}
