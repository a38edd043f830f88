#include "http/file_upload.h"
#include "http/http_text.h"
#include "http/multipart_body.h"
#include "recording/recording_commands.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::ScriptBench;
using plum::test::TemporaryFiles;

TEST(NetGet, StoresThePage)
{
    ScriptBench bench;
    bench.http.answer = {200, "text/html; charset=latin1", "h\xC3\xA9"};
    EXPECT_EQ(bench.eventsOf(u"net.get \"http://h/p\",\"x\""_s), QStringList{u"get http://h/p"_s});
    EXPECT_EQ(bench.variable(u"x"_s), u"hé"_s);
}

TEST(NetGet, CommandWordIsLowerCased)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"net.Get \"http://h/\",\"x\""_s), QStringList{u"get http://h/"_s});
}

TEST(NetGet, AFailureStoresTheEmptyText)
{
    ScriptBench bench;
    for (const int status : {0, 204, 301, 404, 500}) {
        bench.http.answer = {status, {}, "body"};
        bench.runKeepingVariables({u"set.x \"old\""_s, u"net.get \"http://h/\",\"x\""_s});
        EXPECT_EQ(bench.variable(u"x"_s), QString());
        EXPECT_TRUE(bench.state.vardict.contains(u"x"_s));
    }
}

TEST(NetGet, AMissingVariableIsNoError)
{
    ScriptBench bench;
    bench.http.answer = {200, {}, "body"};
    bench.runKeepingVariables({u"net.get \"http://h/\""_s, u"set.after \"1\""_s});
    EXPECT_EQ(bench.variable(u"after"_s), u"1"_s);
    EXPECT_EQ(bench.variable(u"http://h/"_s), QString());
}

TEST(NetPost, DoesNothing)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"net.post \"anything\",\"x\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"net.put \"anything\",\"x\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"net. \"anything\",\"x\""_s), QStringList());
}

class NetUploadTest : public testing::Test
{
protected:
    NetUploadTest() { bench.http.answer = {200, {}, "thanks"}; }

    QString uploadLine(const QString &path, const QString &more = u",\"\",\"x\""_s) const
    {
        return u"net.upload \"http://h/up\",\"%1\",\"file\""_s.arg(path) + more;
    }

    ScriptBench bench;
    TemporaryFiles files;
};

TEST_F(NetUploadTest, SendsTheExactBytes)
{
    const QByteArray content("\x00\xFF\r\n--\r\n", 8);
    const QString path = files.write(u"a.bin"_s, content);
    bench.runKeepingVariables({uploadLine(path, u",\"image/png\",\"x\""_s)});
    EXPECT_EQ(bench.variable(u"x"_s), u"thanks"_s);

    const QByteArray prefix("multipart/form-data; boundary=");
    ASSERT_TRUE(bench.http.postedType.startsWith(prefix));
    const QByteArray boundary = bench.http.postedType.sliced(prefix.size());
    EXPECT_EQ(bench.http.postedBody,
        "--" + boundary + "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"" + path.toUtf8()
            + "\"\r\nContent-Type: image/png\r\n\r\n" + content + "\r\n--" + boundary + "--\r\n");
}

TEST_F(NetUploadTest, AnEmptyContentTypeAndVariableStillSend)
{
    const QString path = files.write(u"a.txt"_s, "x");
    EXPECT_EQ(bench.eventsOf(uploadLine(path, u",\"\",\"\""_s)), QStringList{u"post http://h/up"_s});
    EXPECT_TRUE(bench.http.postedBody.contains("\r\nContent-Type: application/upload\r\n\r\nx\r\n"));
    EXPECT_TRUE(bench.http.postedBody.contains("; filename=\"" + path.toUtf8() + "\"\r\n"));
    EXPECT_EQ(bench.state.vardict.size(), 0);
    EXPECT_EQ(bench.eventsOf(uploadLine(path, QString())), QStringList{u"post http://h/up"_s});
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(NetUploadTest, TheNameIsThePathAsTheScriptWroteIt)
{
    files.write(u"a.txt"_s, "x");
    const QString written = files.folder() + u"\\a.txt"_s;
    bench.runKeepingVariables({uploadLine(written)});
    EXPECT_TRUE(bench.http.postedBody.contains("filename=\"" + written.toUtf8() + "\""))
        << bench.http.postedBody.toStdString();
}

TEST_F(NetUploadTest, EveryUploadHasItsOwnBoundary)
{
    const QString path = files.write(u"a.txt"_s, "x");
    static const QRegularExpression expected(u"^multipart/form-data; boundary=-{27}[A-Za-z0-9]{13}$"_s);
    QSet<QByteArray> seen;
    for (int i = 0; i < 20; ++i) {
        bench.runKeepingVariables({uploadLine(path)});
        EXPECT_TRUE(expected.match(QString::fromLatin1(bench.http.postedType)).hasMatch());
        seen.insert(bench.http.postedType);
    }
    EXPECT_EQ(seen.size(), 20);
}

TEST_F(NetUploadTest, AMissingFileSendsNothingAndAnswersWithTheLastResponse)
{
    EXPECT_EQ(bench.eventsOf(uploadLine(u"C:\\none.txt"_s)), QStringList());
    EXPECT_EQ(bench.variable(u"x"_s), QString());

    const QString path = files.write(u"a.txt"_s, "x");
    bench.runKeepingVariables({uploadLine(path), u"set.x \"\""_s, uploadLine(u"C:\\none.txt"_s)});
    EXPECT_EQ(bench.variable(u"x"_s), u"thanks"_s);
}

TEST_F(NetUploadTest, EveryProblemIsKept)
{
    plum::FileUpload upload(bench.http, bench.platform.paths(), bench.platform.textCodec());
    upload.UploadFile(u"http://host/"_s, u"C:\\none.txt"_s, u"a/b"_s, u"f"_s);
    EXPECT_EQ(upload.errors(), u"\r\n文件不存在.."_s);
    upload.UploadFile(u"http://host/"_s, u"C:\\none.txt"_s, u"a/b"_s, u"f"_s);
    EXPECT_EQ(upload.errors(), u"\r\n文件不存在..\r\n文件不存在.."_s);
    EXPECT_FALSE(upload.problem().isEmpty());
}

TEST_F(NetUploadTest, AFolderIsNoFile)
{
    EXPECT_EQ(bench.eventsOf(uploadLine(files.folder())), QStringList());
}

TEST_F(NetUploadTest, AFailingConnectionAnswersWithTheLastResponse)
{
    const QString path = files.write(u"a.txt"_s, "x");
    bench.runKeepingVariables({uploadLine(path)});
    bench.http.answer = {};
    bench.runKeepingVariables({u"set.x \"\""_s, uploadLine(path)});
    EXPECT_EQ(bench.variable(u"x"_s), u"thanks"_s);
}

TEST_F(NetUploadTest, AnErrorPageIsAResponseToo)
{
    const QString path = files.write(u"a.txt"_s, "x");
    bench.http.answer = {500, {}, "broken"};
    bench.runKeepingVariables({uploadLine(path)});
    EXPECT_EQ(bench.variable(u"x"_s), u"broken"_s);
}

TEST_F(NetUploadTest, WithoutATransportNothingIsSent)
{
    const QString path = files.write(u"a.txt"_s, "x");
    bench.http.problem = u"no module"_s;
    EXPECT_EQ(bench.eventsOf(uploadLine(path)), QStringList());

    plum::FileUpload upload(bench.http, bench.platform.paths(), bench.platform.textCodec());
    upload.UploadFile(u"http://host/"_s, path, u"a/b"_s, u"f"_s);
    EXPECT_EQ(upload.errors(), u"\r\nno module"_s);
}

TEST(NetDownload, WithNothingButAnAddress)
{
    ScriptBench bench;
    const QStringList expected{
        u"helper C:\\plum\\config\\module\\download\\download.exe|http://h/dir/file.zip@@@"
        "C:\\plum\\config\\module\\download\\tmp@@@file.zip@@@|1"_s};
    EXPECT_EQ(bench.eventsOf(u"net.download \"http://h/dir\\file.zip\""_s), expected);
    EXPECT_EQ(bench.eventsOf(u"net.download \"http://h/dir\\file.zip\",\"\",\"\",\"\""_s), expected);
    EXPECT_EQ(bench.eventsOf(u"net.download \"http://h/dir\\file.zip\",\"\""_s), expected);
}

TEST(NetDownload, PassesAllFourFieldsOn)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"net.download \"http://h/a\\b\",\"D:\\in\",\"c.zip\",\"label\""_s),
        QStringList{u"helper C:\\plum\\config\\module\\download\\download.exe|"
                    "http://h/a\\b@@@D:\\in@@@c.zip@@@label|1"_s});
}

TEST(NetDownload, AMissingHelperGoesUnnoticed)
{
    ScriptBench bench;
    static_cast<plum::recording::RecordingShell &>(bench.platform.shell()).succeeds = false;
    bench.runKeepingVariables({u"net.download \"http://h/a\""_s, u"set.after \"1\""_s});
    EXPECT_EQ(bench.variable(u"after"_s), u"1"_s);
}

TEST(FileNameFromUrl, TakesWhatFollowsTheLastSlash)
{
    QString url = u"http://h\\a/b\\c.zip"_s;
    EXPECT_EQ(plum::FileNameFromUrl(url), u"c.zip"_s);
    EXPECT_EQ(url, u"http://h/a/b/c.zip"_s);
    url = u"plain"_s;
    EXPECT_EQ(plum::FileNameFromUrl(url), u"plain"_s);
    url = u"http://h/"_s;
    EXPECT_EQ(plum::FileNameFromUrl(url), QString());
}

TEST(RandomAlnum, DrawsLettersAndDigitsAlone)
{
    static const QRegularExpression expected(u"^[A-Za-z0-9]{500}$"_s);
    EXPECT_TRUE(expected.match(plum::RandomAlnum(500)).hasMatch());
    EXPECT_EQ(plum::RandomAlnum(0), QString());
    const QString many = plum::RandomAlnum(20'000);
    EXPECT_EQ(QSet<QChar>(many.begin(), many.end()).size(), 26 + 26 + 10) << "each of them";
}

TEST(PartHeader, FillsEachTemplateOnce)
{
    EXPECT_EQ(plum::PartHeader(u"{file}"_s, u"{ct}"_s, u"{field}"_s),
        u"Content-Disposition: form-data; name=\"{file}\"; filename=\"{ct}\"\r\nContent-Type: {field}\r\n\r\n"_s);
}

TEST(MultipartBody, ReadsTheSameInAnyPieceSizeAndFromAnyPlace)
{
    ScriptBench bench;
    TemporaryFiles files;
    QByteArray content(100'000, Qt::Uninitialized);
    for (qsizetype i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * 7 + i / 251);
    const QString path = files.write(u"f"_s, content);
    const auto body = plum::BuildMultipartBody(plum::ReadFileBytes(path), u"B"_s,
        plum::PartHeader(u"n"_s, u"f"_s, u"t"_s), bench.platform.textCodec());
    const QByteArray whole = body->readAll();
    EXPECT_EQ(whole.size(), body->size());
    EXPECT_TRUE(whole.contains(content));
    for (const qint64 piece : {1, 3, 4096, 1'000'000}) {
        ASSERT_TRUE(body->seek(0));
        QByteArray read;
        for (QByteArray next = body->read(piece); !next.isEmpty(); next = body->read(piece))
            read += next;
        EXPECT_EQ(read, whole) << piece;
    }
    ASSERT_TRUE(body->seek(50));
    EXPECT_EQ(body->readAll(), whole.sliced(50));
}

TEST(MultipartBody, AFileThatShrinksMakesReadingFail)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"f"_s, QByteArray(1000, 'x'));
    const auto body
        = plum::BuildMultipartBody(plum::ReadFileBytes(path), u"B"_s, QString(), bench.platform.textCodec());
    ASSERT_TRUE(QFile::resize(path, 10));
    char buffer[2000];
    qint64 read = 0;
    qint64 last = 0;
    while ((last = body->read(buffer, sizeof buffer)) > 0)
        read += last;
    EXPECT_EQ(last, -1);
    EXPECT_LT(read, body->size());
}
