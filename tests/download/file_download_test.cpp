#include "download/file_download.h"

#include "download/byte_server.h"
#include "platform/recording/recording_platform.h"
#include "support/certificates.h"
#include "support/file_size_limit.h"
#include "support/temporary_files.h"
#include "support/test_server.h"
#include "support/wait_until.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::DownloadStatus;
using plum::FileDownload;
using plum::testing::ByteServer;
using plum::testing::httpAnswer;
using Then = ByteServer::Then;

namespace {

class Download : public testing::Test
{
protected:
    Download() { renew(); }

    // Another one, as in the next run of the program.
    void renew()
    {
        download = std::make_unique<FileDownload>(paths);
        QObject::connect(
            download.get(), &FileDownload::Status, [this](DownloadStatus status) { last = status; });
        QObject::connect(download.get(), &FileDownload::Progress,
            [this](float now, const QString &, const QString &, const QString &) { percent = now; });
        download->setTarget(QString(files.folder() + u"/a.bin"_s).replace(u'/', u'\\'));
        download->setUrl(server.url(u"a"_s));
    }

    DownloadStatus run()
    {
        download->start();
        EXPECT_TRUE(plum::test::waitUntil([this] { return !download->isBusy(); }));
        return last;
    }

    // Leaves the first five bytes of `whole` behind.
    void leavePart(const QByteArray &whole, const QByteArray &tag = "\"one\"")
    {
        server.answer({full(whole, tag).chopped(whole.size() - 5)});
        EXPECT_EQ(run(), DownloadStatus::Failed);
        EXPECT_EQ(files.read(u"a.bin.dl"_s), whole.first(5));
        renew();
    }

    static QByteArray full(const QByteArray &body, const QByteArray &tag = "\"one\"")
    {
        return httpAnswer(
            "200 OK", {"ETag: " + tag, "Content-Length: " + QByteArray::number(body.size())}, body);
    }

    static QByteArray part(const QByteArray &range, const QByteArray &body, const QByteArray &tag = "\"one\"")
    {
        return httpAnswer("206 Partial Content",
            {"ETag: " + tag, "Content-Range: " + range, "Content-Length: " + QByteArray::number(body.size())},
            body);
    }

    QStringList names() const { return QDir(files.folder()).entryList(QDir::Files | QDir::Hidden); }

    plum::test::TemporaryFiles files;
    ByteServer server;
    plum::recording::RecordingPaths paths;
    std::unique_ptr<FileDownload> download;
    DownloadStatus last = DownloadStatus::Stopped;
    float percent = 0;
};

const QByteArray content = "0123456789";

} // namespace

TEST_F(Download, FetchesAFileAndLeavesNothingBesideIt)
{
    server.answer({full(content)});
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(files.read(u"a.bin"_s), content);
    EXPECT_EQ(names(), QStringList{u"a.bin"_s});
    EXPECT_EQ(percent, 100.0F);
    EXPECT_EQ(download->problem(), QString());
    EXPECT_EQ(server.ranges(), QList<QByteArray>());
}

TEST_F(Download, GoesOnWithTheSameVersionOfTheFile)
{
    leavePart(content);
    server.answer({part("bytes 5-9/10", "56789")});
    server.answer({part("bytes 5-9/10", "56789")});
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(server.ranges().last(), "bytes=5-");
    EXPECT_EQ(server.headers("if-range"), QList<QByteArray>{"\"one\""});
    EXPECT_EQ(files.read(u"a.bin"_s), content);
    EXPECT_EQ(names(), QStringList{u"a.bin"_s});
}

TEST_F(Download, BeginsAnewWhereTheServerHasAnotherVersionOrKnowsNoRanges)
{
    leavePart(content);
    server.answer({full("another", "\"two\"")});
    server.answer({full("another", "\"two\"")});
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(files.read(u"a.bin"_s), "another");
}

TEST_F(Download, BeginsAnewWhereTheRangeIsNotTheOneThatIsMissing)
{
    for (const QByteArray &answer :
        {part("bytes 4-9/10", "456789"), part("bytes 5-9/11", "56789"), part("bytes 5-7/10", "567"),
            part("items 5-9/10", "56789"), part("bytes 5-9", "56789"), part("", "56789"),
            part("bytes 5-9/10", "56789", "\"two\""),
            httpAnswer("206 Partial Content", {"Content-Range: bytes 5-9/10", "Content-Length: 5"}, "56789"),
            httpAnswer("416 Range Not Satisfiable", {"Content-Range: bytes */5", "Content-Length: 0"}, {})}) {
        ByteServer other;
        QDir(files.folder()).removeRecursively();
        QDir().mkpath(files.folder());
        renew();
        download->setUrl(other.url(u"a"_s));
        other.answer({full(content).chopped(5)});
        other.answer({answer});
        other.answer({full("another", "\"two\"")});
        EXPECT_EQ(run(), DownloadStatus::Failed);
        EXPECT_EQ(run(), DownloadStatus::Complete) << answer.constData();
        EXPECT_EQ(files.read(u"a.bin"_s), "another");
        EXPECT_EQ(other.requests.size(), 3);
        EXPECT_FALSE(other.requests.last().toLower().contains("range"));
    }
}

TEST_F(Download, BeginsAnewWithoutAStrongTag)
{
    leavePart(content, "W/\"weak\"");
    server.answer({full(content)});
    server.answer({full(content)});
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(server.ranges(), QList<QByteArray>());
    EXPECT_EQ(files.read(u"a.bin"_s), content);
}

TEST_F(Download, EverythingThereIsComplete)
{
    leavePart(content);
    files.write(u"a.bin.dl"_s, content);
    const QByteArray nothing
        = httpAnswer("416 Range Not Satisfiable", {"Content-Range: bytes */10", "Content-Length: 0"}, {});
    server.answer({nothing});
    server.answer({nothing});
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(files.read(u"a.bin"_s), content);
}

TEST_F(Download, SaysInWordsWhyAnAnswerIsNoFile)
{
    for (const auto &[status, words] : std::initializer_list<std::pair<QByteArray, QString>>{
             {"404 Not Found", u"The server does not have this file."_s},
             {"403 Forbidden", u"The server does not give this file away."_s},
             {"302 Found", u"The server does not give this file (302)."_s},
             {"206 Partial Content", u"The server does not give this file (206)."_s},
             {"503 Service Unavailable", u"The server has a problem of its own (503)."_s}}) {
        ByteServer other;
        other.answer({httpAnswer(status, {"Content-Length: 4"}, "page")});
        download->setUrl(other.url(u"a"_s));
        EXPECT_EQ(run(), DownloadStatus::BadAnswer);
        EXPECT_EQ(download->problem(), words);
        EXPECT_EQ(names(), QStringList());
    }
}

TEST_F(Download, SaysInWordsWhyThereIsNoAnswer)
{
    server.answer({full(content).chopped(5)});
    EXPECT_EQ(run(), DownloadStatus::Failed);
    EXPECT_EQ(download->problem(), u"The connection broke."_s);
    download->setUrl(u"http://127.0.0.1:%1/f"_s.arg(plum::test::freePort()));
    EXPECT_EQ(run(), DownloadStatus::NotSent);
    EXPECT_EQ(download->problem(), u"The server cannot be reached."_s);
    download->setUrl(u"ftp://127.0.0.1/f"_s);
    EXPECT_EQ(run(), DownloadStatus::NotSent);
    EXPECT_EQ(download->problem(), u"This is no address of a file on the web."_s);
}

TEST_F(Download, LeavesFilesAndOtherDownloadsAlone)
{
    files.write(u"a.bin"_s, "mine");
    files.write(u"a.bin.dl"_s, "a part of something else");
    server.answer({full(content)});
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(files.read(u"a.bin"_s), "mine");
    EXPECT_EQ(files.read(u"a.bin.dl"_s), "a part of something else");
    EXPECT_EQ(files.read(u"a(1).bin"_s), content);
    EXPECT_EQ(names().size(), 3);
}

TEST_F(Download, TwoOfTheSameFileDoNotMix)
{
    server.answer({full(content).chopped(5), Then::Stall});
    server.answer({full(content)});
    download->start();
    ASSERT_TRUE(plum::test::waitUntil([this] { return percent > 0; }));
    const std::unique_ptr<FileDownload> first = std::move(download);
    renew();
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(files.read(u"a.bin"_s), content);
    EXPECT_EQ(files.read(u"a.bin.dl"_s), content.first(5));
    first->pause();
}

TEST_F(Download, AFullDiskIsSaid)
{
    const QByteArray large(200'000, 'x');
    server.answer({full(large)});
    const plum::test::FileSizeLimit limit(100'000);
    EXPECT_EQ(run(), DownloadStatus::NoFile);
    EXPECT_EQ(download->problem(), u"There is no room left on the disk."_s);
}

TEST_F(Download, SpeaksHttpsAndFollowsToIt)
{
    const QStringList certificate = plum::test::selfSignedCertificate(files);
    plum::test::OddServer safe(certificate);
    download->setUrl(safe.address(u"status/200"_s));
    EXPECT_EQ(run(), DownloadStatus::NotSent);
    EXPECT_EQ(download->problem(), u"The server could not prove who it is."_s);

    const plum::test::Trust trust(certificate[0]);
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(files.read(u"a.bin"_s), "status body");
    server.answer({httpAnswer("302 Found", {"Location: " + safe.address(u"text"_s).toUtf8()}, {})});
    download->setUrl(server.url(u"a"_s));
    EXPECT_EQ(run(), DownloadStatus::Complete);
    EXPECT_EQ(files.read(u"a(1).bin"_s), "héllo 你好");
}
