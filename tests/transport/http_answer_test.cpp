#include "transport/http_answer.h"

#include <gtest/gtest.h>

using plum::HttpAnswer;
using State = HttpAnswer::State;

namespace {

struct Read
{
    HttpAnswer answer;
    QByteArray body;
    State state() const { return answer.state(); }
};

// The answer after `bytes` have arrived in pieces of so many, and the connection has ended if `ends`.
Read read(const QByteArray &bytes, bool ends = true, qsizetype piece = 1)
{
    Read result;
    for (qsizetype at = 0; at < bytes.size(); at += piece)
        result.answer.take(bytes.mid(at, piece), result.body);
    if (ends)
        result.answer.end();
    return result;
}

const QByteArray chunkedHead = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";

} // namespace

TEST(HttpAnswer, IsTheSameHoweverItsBytesArrive)
{
    const QByteArray bytes
        = "HTTP/1.1 206 Partial\r\nA: 1\r\nContent-LENGTH:  7 \r\nA:2\r\n\r\ncontent and more";
    for (qsizetype piece = 1; piece <= bytes.size(); ++piece) {
        const Read result = read(bytes, false, piece);
        EXPECT_EQ(result.state(), State::Complete) << piece;
        EXPECT_EQ(result.body, "content");
        EXPECT_EQ(result.answer.status(), 206);
        EXPECT_EQ(result.answer.length(), 7);
        EXPECT_EQ(result.answer.header("a"), "1, 2");
        EXPECT_EQ(result.answer.header("none"), QByteArray());
    }
}

TEST(HttpAnswer, ALengthDecidesAndAnEarlierEndIsACut)
{
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 7\r\n\r\n";
    EXPECT_EQ(read(head + "content", false).state(), State::Complete);
    EXPECT_EQ(read(head + "conten", false).state(), State::Body);
    EXPECT_EQ(read(head + "conten").state(), State::Cut);
    EXPECT_EQ(read(head.chopped(1)).state(), State::Cut);
    EXPECT_EQ(read("").state(), State::Cut);
}

TEST(HttpAnswer, WithoutALengthTheEndOfTheConnectionIsTheEnd)
{
    for (const QByteArray head : {"HTTP/1.0 200\r\n\r\n", "HTTP/1.1 200 OK\nContent-Length: -5\n\n",
             "HTTP/1.1 200 OK\r\nContent-Length: 3, 4\r\n\r\n"}) {
        EXPECT_EQ(read(head + "content", false).state(), State::Body) << head.constData();
        EXPECT_EQ(read(head + "content").state(), State::Complete);
        EXPECT_EQ(read(head + "content").body, "content");
    }
}

TEST(HttpAnswer, ChunksEndWithTheLastOneAndNothingElse)
{
    const QByteArray chunks = "3\r\ncon\r\n4;ext=\"a\"\r\ntent\r\n";
    for (const char *end : {"0\r\n", "0\r\n\r\n", "000\n", "0;x\r\nTrailer: 1\r\n\r\n"}) {
        const Read result = read(chunkedHead + chunks + end, false);
        EXPECT_EQ(result.state(), State::Complete) << end;
        EXPECT_EQ(result.body, "content");
    }
    for (const qsizetype missing : {1, 2, 5, 9})
        EXPECT_EQ(read((chunkedHead + chunks + "0\r\n").chopped(missing)).state(), State::Cut) << missing;
}

TEST(HttpAnswer, ChunkSizesThatAreNoneAreNoHttp)
{
    for (const char *size : {"", "zz", "-1", "0x3", "1234567890123456", "3 3"})
        EXPECT_EQ(read(chunkedHead + size + "\r\nabc\r\n").state(), State::NotHttp) << size;
    EXPECT_EQ(read(chunkedHead + "3\r\nabcd\r\n").state(), State::NotHttp);
    EXPECT_EQ(read(chunkedHead + QByteArray(5000, '0')).state(), State::NotHttp);
}

TEST(HttpAnswer, SomeAnswersHaveNoBody)
{
    for (const char *status : {"204 No Content", "304 Not Modified"}) {
        const QByteArray head = QByteArray("HTTP/1.1 ") + status + "\r\nContent-Length: 5\r\n\r\n";
        EXPECT_EQ(read(head, false).state(), State::Complete);
    }
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n", false).state(), State::Complete);
}

TEST(HttpAnswer, InterimAnswersArePassedOver)
{
    const Read result = read("HTTP/1.1 100 Continue\r\nA: 1\r\n\r\nHTTP/1.1 103 Hints\r\n\r\n"
                             "HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\nx",
        false);
    EXPECT_EQ(result.state(), State::Complete);
    EXPECT_EQ(result.answer.status(), 200);
    EXPECT_EQ(result.answer.header("A"), QByteArray());
    EXPECT_EQ(read("HTTP/1.1 101 Switching\r\n\r\n").state(), State::NotHttp);
}

TEST(HttpAnswer, OtherThingsAreNoHttp)
{
    for (const char *line :
        {"hello", "HTTP/1.1", "HTTP/1.1 20", "HTTP/1.1 2x0 OK", "HTTP/1.1 000", "FTP 200 OK"})
        EXPECT_EQ(read(QByteArray(line) + "\r\n", false).state(), State::NotHttp) << line;
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip, chunked\r\n\r\n").state(), State::NotHttp);
}

TEST(HttpAnswer, AValueMayGoOnInTheNextLine)
{
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\n odd\r\nA: one\r\n\t two\r\nno field\r\n\r\n").answer.header("A"),
        "one two");
}

TEST(HttpAnswer, AHeadOfMoreThan256KibibytesIsNoHttp)
{
    const QByteArray line = "A: " + QByteArray(1000, 'x') + "\r\n";
    const QByteArray start = "HTTP/1.1 200 OK\r\n";
    EXPECT_EQ(read(start + line.repeated(256), false, 1000).state(), State::Head);
    EXPECT_EQ(read(start + line.repeated(262), false, 1000).state(), State::NotHttp);
    EXPECT_EQ(read(start + "A: " + QByteArray(263'000, 'x'), false, 1000).state(), State::NotHttp);
    EXPECT_EQ(read(QByteArray(263'000, 'x'), false, 1000).state(), State::NotHttp);
    const QByteArray interim = "HTTP/1.1 100 Continue\r\n" + line + "\r\n";
    EXPECT_EQ(read(interim.repeated(260), false, 1000).state(), State::NotHttp);
}
