#include "transport/content_decoding.h"

#include <gtest/gtest.h>

#include <zlib.h>

using plum::decodedContent;

namespace {

constexpr qint64 plenty = 1 << 20;
constexpr int gzipFrame = 15 + 16; // how zlib is told
constexpr int zlibFrame = 15;
constexpr int noFrame = -15;

QByteArray packed(const QByteArray &bytes, int frame)
{
    z_stream state{};
    EXPECT_EQ(deflateInit2(&state, 6, Z_DEFLATED, frame, 8, Z_DEFAULT_STRATEGY), Z_OK);
    QByteArray result(bytes.size() + 1000, '\0');
    QByteArray input = bytes;
    state.next_in = reinterpret_cast<Bytef *>(input.data());
    state.avail_in = static_cast<uInt>(input.size());
    state.next_out = reinterpret_cast<Bytef *>(result.data());
    state.avail_out = static_cast<uInt>(result.size());
    EXPECT_EQ(deflate(&state, Z_FINISH), Z_STREAM_END);
    result.truncate(static_cast<qsizetype>(state.total_out));
    deflateEnd(&state);
    return result;
}

const QByteArray content
    = QByteArray("a page of some length, a page of some length\r\n").repeated(50) + "end";

} // namespace

TEST(ContentDecoding, ReadsGzipAndBothKindsOfDeflate)
{
    EXPECT_EQ(decodedContent("gzip", packed(content, gzipFrame), plenty), content);
    EXPECT_EQ(decodedContent("X-GZIP", packed(content, gzipFrame), plenty), content);
    EXPECT_EQ(decodedContent("deflate", packed(content, zlibFrame), plenty), content);
    EXPECT_EQ(decodedContent("deflate", packed(content, noFrame), plenty), content);
    EXPECT_EQ(decodedContent("", content, plenty), content);
    EXPECT_EQ(decodedContent("utf-8", content, plenty), content);
    EXPECT_EQ(decodedContent("gzip", {}, plenty), QByteArray());
}

TEST(ContentDecoding, EveryCutIsNoticed)
{
    const QByteArray small = content.first(60);
    const auto every = [](const char *encoding, const QByteArray &whole) {
        for (qsizetype size = 1; size < whole.size(); ++size)
            EXPECT_EQ(decodedContent(encoding, whole.first(size), plenty), std::nullopt) << encoding << size;
    };
    every("gzip", packed(small, gzipFrame));
    every("gzip", packed(QByteArray(40, '\0'), gzipFrame));
    every("deflate", packed(small, zlibFrame));
    every("deflate", packed(small, noFrame));
}

TEST(ContentDecoding, NoFlippedBitOfGzipsDataAndTrailerChangesThePage)
{
    constexpr qsizetype headerBits = 10 * 8;
    const QByteArray whole = packed(content.first(60), gzipFrame);
    for (qsizetype bit = headerBits; bit < whole.size() * 8; ++bit) {
        QByteArray damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        // The last byte of the data has bits that mean nothing.
        EXPECT_EQ(decodedContent("gzip", damaged, plenty).value_or(content.first(60)), content.first(60))
            << bit;
    }
}

TEST(ContentDecoding, GzipsHeaderMayHoldMore)
{
    const QByteArray plain = packed(content, gzipFrame);
    QByteArray head = plain.first(10);
    head[3] = 2 | 4 | 8 | 16;
    head += QByteArray("\x03\0abc", 5) + QByteArray("name\0", 5) + QByteArray("comment\0", 8) + "cc";
    EXPECT_EQ(decodedContent("gzip", head + plain.sliced(10), plenty), content);
    for (qsizetype size = 1; size < head.size(); ++size)
        EXPECT_EQ(decodedContent("gzip", head.first(size), plenty), std::nullopt) << size;
}

TEST(ContentDecoding, GzipMembersStandBehindEachOtherAndOtherBytesDoNotCount)
{
    const QByteArray member = packed(content, gzipFrame);
    EXPECT_EQ(decodedContent("gzip", member + member, plenty), content + content);
    EXPECT_EQ(decodedContent("gzip", member + QByteArray(7, '\0'), plenty), content);
    EXPECT_EQ(decodedContent("gzip", member + member.chopped(1), plenty), std::nullopt);
}

TEST(ContentDecoding, StopsAtTheLimit)
{
    const QByteArray zeros(5'000'000, '\0');
    EXPECT_EQ(decodedContent("gzip", packed(zeros, gzipFrame), zeros.size()), zeros);
    EXPECT_EQ(decodedContent("gzip", packed(zeros, gzipFrame), zeros.size() - 1), std::nullopt);
    const QByteArray half = packed(zeros.first(2'500'001), gzipFrame);
    EXPECT_EQ(decodedContent("gzip", half + half, zeros.size()), std::nullopt);
}
