#include "http/http_text.h"
#include "http/loaded_http_client.h"
#include "platform/linux/linux_text_codec.h"
#include "support/certificates.h"
#include "support/temporary_files.h"
#include "support/test_server.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::HttpReply;
using plum::test::freePort;
using plum::test::Nginx;
using plum::test::OddServer;
using plum::test::selfSignedCertificate;
using plum::test::TemporaryFiles;
using plum::test::Trust;

namespace {

class HttpGet : public testing::Test
{
protected:
    HttpReply get(const QString &path) { return client.get(server.address(path)); }
    QString text(const QString &path) { return plum::HttpGetText(client, codec, server.address(path)); }

    OddServer server;
    plum::LoadedHttpClient client;
    plum::LinuxTextCodec codec;
};

} // namespace

TEST_F(HttpGet, DecodesByTheBytesNotByTheHeader)
{
    EXPECT_EQ(text(u"text"_s), u"héllo 你好"_s);
    EXPECT_EQ(text(u"gbk"_s), u"你好，世界"_s);
}

TEST_F(HttpGet, AsksWithGetAndWithoutCookies)
{
    EXPECT_EQ(get(u"request"_s).body, "GET /request HTTP/1.1");
    get(u"headers"_s);
    const QJsonObject headers = QJsonDocument::fromJson(get(u"headers"_s).body).object();
    EXPECT_TRUE(headers.contains(u"host"_s));
    EXPECT_FALSE(headers.contains(u"cookie"_s));
}

TEST_F(HttpGet, AnswersWithEveryStatus)
{
    for (const int status : {200, 201, 400, 401, 403, 404, 418, 500, 503}) {
        const HttpReply reply = get(u"status/%1"_s.arg(status));
        EXPECT_EQ(reply.status, status);
        EXPECT_EQ(reply.body, "status body") << status;
        EXPECT_EQ(text(u"status/%1"_s.arg(status)), status == 200 ? u"status body"_s : QString());
    }
}

TEST_F(HttpGet, ReadsEveryKindOfBody)
{
    EXPECT_EQ(text(u"chunked"_s), u"one two three"_s);
    EXPECT_EQ(text(u"gzip"_s), u"zipped 你好"_s);
    EXPECT_EQ(text(u"deflate"_s), u"deflated 你好"_s);
    EXPECT_EQ(text(u"until-close"_s), u"no length"_s);
    EXPECT_EQ(get(u"empty"_s).status, 200);
    EXPECT_EQ(text(u"empty"_s), QString());
    EXPECT_EQ(get(u"long"_s).body, "four");
    QByteArray expected(300'001, Qt::Uninitialized);
    for (int i = 0; i < expected.size(); ++i)
        expected[i] = static_cast<char>(i * 31 % 251);
    EXPECT_EQ(get(u"size/300001"_s).body, expected);
}

TEST_F(HttpGet, ABrokenAnswerIsAFailingConnection)
{
    for (const QString &path :
        {u"short"_s, u"gzip-broken"_s, u"reset"_s, u"reset-midway"_s, u"close"_s, u"garbage"_s}) {
        EXPECT_EQ(get(path).status, 0) << path.toStdString();
        EXPECT_EQ(get(path).body, QByteArray()) << path.toStdString();
    }
}

TEST_F(HttpGet, AChunkedBodyThatIsCutIsAFailingConnection)
{
    EXPECT_EQ(get(u"chunked-cut"_s).status, 0);
}

TEST_F(HttpGet, AChunkedBodyMayEndWithItsLastChunk)
{
    EXPECT_EQ(get(u"chunked-end"_s).body, "one two three");
}

TEST_F(HttpGet, AGzipPageThatIsCutIsAFailingConnectionHoweverItWasSent)
{
    for (const QString &framing : {u"close"_s, u"length"_s, u"chunks"_s})
        EXPECT_EQ(get(u"gzip-cut/"_s + framing).status, 0) << framing.toStdString();
}

TEST_F(HttpGet, AGzipPageThatIsWholeIsWholeWhateverTheConnectionSays)
{
    EXPECT_EQ(text(u"gzip-whole-but-short"_s), u"zipped 你好"_s);
}

TEST_F(HttpGet, AHeadWithoutEndIsAFailingConnection)
{
    EXPECT_EQ(get(u"long-head"_s).status, 0);
}

TEST_F(HttpGet, NonsensicalLengthsDoNoHarm)
{
    EXPECT_EQ(get(u"chunked-garbage"_s).status, 0);
    EXPECT_EQ(get(u"bad-length"_s).body, "body");
    EXPECT_EQ(text(u"text"_s), u"héllo 你好"_s);
}

TEST_F(HttpGet, FollowsTenRedirectionsAndNoMore)
{
    EXPECT_EQ(text(u"redirect/1"_s), u"héllo 你好"_s);
    EXPECT_EQ(text(u"redirect/10"_s), u"héllo 你好"_s);
    EXPECT_EQ(get(u"redirect/11"_s).status, 0);
    EXPECT_EQ(get(u"redirect-forever"_s).status, 0);
}

TEST_F(HttpGet, NeverLeavesHttpForAnotherScheme)
{
    EXPECT_EQ(get(u"redirect-to/file:///etc/passwd"_s).status, 0);
    EXPECT_EQ(client.get(u"file:///etc/passwd"_s).status, 0);
    EXPECT_EQ(client.get(u"data:,text"_s).status, 0);
    EXPECT_EQ(client.get(u"ftp://127.0.0.1/"_s).status, 0);
}

TEST_F(HttpGet, AddressesThatNameNothingFail)
{
    EXPECT_EQ(client.get(QString()).status, 0);
    EXPECT_EQ(client.get(u"http://"_s).status, 0);
    EXPECT_EQ(client.get(u"127.0.0.1/page"_s).status, 0);
    EXPECT_EQ(client.get(u"http://127.0.0.1:%1/"_s.arg(freePort())).status, 0);
    EXPECT_EQ(client.get(u"http://no-such-host.invalid/"_s).status, 0);
}

TEST_F(HttpGet, AnAddressMayHoldBlanksAndChinese)
{
    EXPECT_EQ(
        client.get(server.address(u"request/你 好"_s)).body, "GET /request/%E4%BD%A0%20%E5%A5%BD HTTP/1.1");
}

TEST_F(HttpGet, GivesUpAnAnswerBeyondTheLimit)
{
    EXPECT_EQ(get(u"huge/announced"_s).status, 0);
    EXPECT_EQ(get(u"huge"_s).status, 0);
    EXPECT_EQ(get(u"gzip-bomb"_s).status, 0);
}

TEST_F(HttpGet, TheInterfaceLivesWhileItWaits)
{
    // Only an event that is handled during the wait lets the server answer.
    QTimer::singleShot(0, [this] { EXPECT_EQ(get(u"release"_s).body, "ok"); });
    EXPECT_EQ(get(u"held"_s).body, "released");
}

TEST_F(HttpGet, TheEndOfTheProcessEndsTheWait)
{
    for (const QString &path : {u"held"_s, u"stalled"_s}) {
        QTimer::singleShot(20, [] { QCoreApplication::exit(); });
        EXPECT_EQ(get(path).status, 0);
        // Entering the main loop anew takes the exit back.
        QTimer::singleShot(0, [] { QCoreApplication::quit(); });
        QCoreApplication::exec();
    }
}

TEST(HttpsGet, AnUnknownCertificateIsAFailingConnection)
{
    TemporaryFiles files;
    const QStringList certificate = selfSignedCertificate(files);
    OddServer server(certificate);
    plum::LoadedHttpClient client;
    EXPECT_EQ(client.get(server.address(u"status/200"_s)).status, 0);
    const Trust trust(certificate[0]);
    EXPECT_EQ(client.get(server.address(u"status/200"_s)).status, 200);
}

TEST(HttpsGet, FollowsUpToHttpsButNeverDown)
{
    TemporaryFiles files;
    const QStringList certificate = selfSignedCertificate(files);
    OddServer safe(certificate);
    OddServer plain;
    plum::LoadedHttpClient client;
    const Trust trust(certificate[0]);
    EXPECT_EQ(client.get(safe.address(u"status/200"_s)).body, "status body");
    EXPECT_EQ(
        client.get(plain.address(u"redirect-to/"_s + safe.address(u"status/200"_s))).body, "status body");
    EXPECT_EQ(client.get(safe.address(u"redirect-to/"_s + plain.address(u"status/200"_s))).status, 0);
}

TEST(NginxGet, ServesPagesErrorsRedirectionsAndCompression)
{
    Nginx nginx;
    ASSERT_TRUE(nginx.start(u"location /old { return 301 /page.html; } location /loop { return 302 /loop; } "
                            "gzip on; gzip_min_length 1; gzip_types *;"_s));
    QFile page(nginx.folder() + u"/page.html"_s);
    ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    const QString content = u"<p>你好 héllo</p>\r\n"_s.repeated(5000);
    page.write(content.toUtf8());
    page.close();

    plum::LoadedHttpClient client;
    plum::LinuxTextCodec codec;
    EXPECT_EQ(plum::HttpGetText(client, codec, nginx.address(u"page.html"_s)), content);
    EXPECT_EQ(plum::HttpGetText(client, codec, nginx.address(u"old"_s)), content);
    EXPECT_EQ(client.get(nginx.address(u"missing"_s)).status, 404);
    EXPECT_EQ(plum::HttpGetText(client, codec, nginx.address(u"missing"_s)), QString());
    EXPECT_EQ(client.get(nginx.address(u"loop"_s)).status, 0);
}
