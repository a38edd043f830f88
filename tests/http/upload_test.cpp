#include "http/file_upload.h"
#include "http/loaded_http_client.h"
#include "platform/linux/file_paths.h"
#include "platform/linux/linux_text_codec.h"
#include "support/temporary_files.h"
#include "support/test_server.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::test::OddServer;
using plum::test::TemporaryFiles;

namespace {

// Peak of this process's resident memory, in bytes.
qint64 peakMemory()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ')[1].toLongLong() * 1024;
    }
    return 0;
}

class Upload : public testing::Test
{
protected:
    QJsonObject post(const QString &file, const QString &field = u"file"_s, const QString &path = u"upload"_s)
    {
        const QString answer
            = upload.UploadFile(server.address(path), file, u"application/octet-stream"_s, field);
        return QJsonDocument::fromJson(answer.toUtf8()).object();
    }

    OddServer server;
    TemporaryFiles files;
    plum::FilePaths paths{u"/plum/plum"_s};
    plum::LinuxTextCodec codec;
    plum::LoadedHttpClient client;
    plum::FileUpload upload{client, paths, codec};
};

QString sha256(const QByteArray &content)
{
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}

QByteArray everyByte()
{
    QByteArray bytes;
    for (int i = 0; i < 70'000; ++i)
        bytes += static_cast<char>(i ^ (i >> 8));
    return bytes + "\r\n--\r\n";
}

} // namespace

TEST_F(Upload, AnotherParserReadsTheFileBackByteForByte)
{
    const QByteArray content = everyByte();
    for (const QString &name : {u"plain.bin"_s, u"中文 名字.bin"_s}) {
        const QString file = files.write(name, content);
        const QJsonObject answer = post(file, u"字段"_s);
        const QJsonArray parts = answer[u"parts"_s].toArray();
        ASSERT_EQ(parts.size(), 1);
        EXPECT_EQ(answer[u"defects"_s].toInt(), 0);
        EXPECT_EQ(parts[0][u"sha256"_s].toString(), sha256(content));
        EXPECT_EQ(parts[0][u"filename"_s].toString(), file);
        EXPECT_EQ(parts[0][u"name"_s].toString(), u"字段"_s);
        EXPECT_EQ(parts[0][u"type"_s].toString(), u"application/octet-stream"_s);
    }
}

TEST_F(Upload, QuotesInNamesAreWrittenAsBrowsersWriteThem)
{
    const QString file = files.write(u"a \"quoted\" name.bin"_s, "x");
    const QJsonObject answer = post(file, u"the \"field\"\r\nX: y"_s);
    EXPECT_EQ(answer[u"defects"_s].toInt(), 0);
    EXPECT_EQ(answer[u"parts"_s][0][u"filename"_s].toString(), QString(file).replace(u'"', u"%22"_s));
    EXPECT_EQ(answer[u"parts"_s][0][u"name"_s].toString(), u"the %22field%22%0D%0AX: y"_s);
}

TEST_F(Upload, AnAnswerOfChunksWithoutALastLineArrives)
{
    EXPECT_EQ(
        upload.UploadFile(server.address(u"upload-chunked-end"_s), files.write(u"f"_s, "x"), u"t"_s, u"n"_s),
        u"thanks"_s);
}

TEST_F(Upload, AnEmptyFileIsAnEmptyPart)
{
    const QJsonObject answer = post(files.write(u"empty"_s, QByteArray()));
    EXPECT_EQ(answer[u"parts"_s][0][u"sha256"_s].toString(), sha256(QByteArray()));
}

TEST_F(Upload, TheBodyIsSentAgainAfterARedirection)
{
    const QByteArray content = everyByte();
    const QJsonObject answer = post(files.write(u"f"_s, content), u"file"_s, u"upload-redirect"_s);
    EXPECT_EQ(answer[u"parts"_s][0][u"sha256"_s].toString(), sha256(content));
}

TEST_F(Upload, ARefusalIsAnAnswerInItsOwnEncoding)
{
    EXPECT_EQ(
        upload.UploadFile(server.address(u"upload-refused"_s), files.write(u"f"_s, "x"), u"t"_s, u"n"_s),
        u"拒绝"_s);
}

TEST_F(Upload, AConnectionThatBreaksAnswersWithTheLastResponse)
{
    const QString file = files.write(u"f"_s, everyByte());
    const QJsonObject first = post(file);
    EXPECT_EQ(post(file, u"file"_s, u"upload-reset"_s), first);
    EXPECT_EQ(upload.UploadFile(u"http://127.0.0.1:%1/"_s.arg(plum::test::freePort()), file, u"t"_s, u"n"_s)
                  .contains(u"parts"_s),
        true);
}

TEST_F(Upload, ALargeFileNeedsLittleMemory)
{
    constexpr qint64 size = qint64(1) << 30;
    const QString file = files.write(u"large"_s, "x");
    ASSERT_TRUE(QFile::resize(file, size)); // a hole: it takes no space on the disk
    post(files.write(u"small"_s, "x")); // the module and its libraries are loaded
    const qint64 before = peakMemory();
    const QJsonObject answer = post(file);
    EXPECT_GT(answer[u"received"_s].toInteger(), size);
    EXPECT_EQ(answer[u"received"_s], answer[u"length"_s]);
    EXPECT_LT(peakMemory() - before, qint64(64) << 20);
}
