#include "archive/deflate.h"

#include "archive/inflate.h"
#include "archive/prefix_code.h"
#include "archive/zip_writer.h"
#include "support/dice.h"

#include <QFile>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <numeric>
#include <zlib.h>

using namespace Qt::StringLiterals;
using plum::PrefixCode;
using plum::recording::Dice;

namespace {

// What two decoders that know nothing of each other make of the stream.
void expectRoundTrip(const QByteArray &content)
{
    const QByteArray packed = plum::deflated(content);
    std::vector<quint8> output(static_cast<size_t>(content.size()));
    const std::span input(
        reinterpret_cast<const quint8 *>(packed.data()), static_cast<size_t>(packed.size()));
    const auto ours = plum::Inflate(input, output, false);
    EXPECT_EQ(ours.outcome, plum::InflateOutcome::Done);
    EXPECT_EQ(ours.written, content.size());
    EXPECT_TRUE(
        std::ranges::equal(output, content, {}, {}, [](char byte) { return static_cast<quint8>(byte); }));

    z_stream zlib{};
    ASSERT_EQ(inflateInit2(&zlib, -15), Z_OK);
    QByteArray theirs(content.size() + 1, '\0');
    zlib.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(packed.data()));
    zlib.avail_in = static_cast<uInt>(packed.size());
    zlib.next_out = reinterpret_cast<Bytef *>(theirs.data());
    zlib.avail_out = static_cast<uInt>(theirs.size());
    EXPECT_EQ(inflate(&zlib, Z_FINISH), Z_STREAM_END) << (zlib.msg ? zlib.msg : "");
    EXPECT_EQ(zlib.avail_in, 0U); // not a byte more than needed
    theirs.resize(static_cast<qsizetype>(zlib.total_out));
    EXPECT_TRUE(theirs == content);
    inflateEnd(&zlib);
}

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator(4).generate(bytes.begin(), bytes.end());
    return bytes;
}

qsizetype zlibsSize(const QByteArray &content)
{
    QByteArray packed(static_cast<qsizetype>(compressBound(static_cast<uLong>(content.size()))), '\0');
    uLongf size = static_cast<uLongf>(packed.size());
    EXPECT_EQ(compress2(reinterpret_cast<Bytef *>(packed.data()), &size,
                  reinterpret_cast<const Bytef *>(content.data()), static_cast<uLong>(content.size()), 9),
        Z_OK);
    constexpr qsizetype wrapping = 6; // bytes around the stream itself
    return static_cast<qsizetype>(size) - wrapping;
}

} // namespace

TEST(Deflate, EveryKindOfContentComesBack)
{
    expectRoundTrip({});
    for (int size = 1; size < 40; ++size) {
        expectRoundTrip(QByteArray(size, 'a'));
        expectRoundTrip(noise(size));
    }
    expectRoundTrip(QByteArray(1'000'000, '\0'));
    expectRoundTrip(noise(200'000));
    expectRoundTrip(QByteArray("0123456789abcdef").repeated(50'000));
    expectRoundTrip(noise(100'000) + QByteArray(100'000, 'x') + noise(40'000));
}

TEST(Deflate, RepetitionsOfEveryLengthComeBack)
{
    const QByteArray word = noise(300);
    QByteArray content = word;
    for (qsizetype length = 1; length <= 300; ++length)
        content += word.first(length) + noise(length % 7 + 1);
    expectRoundTrip(content);
}

TEST(Deflate, RepetitionsFromEveryDistanceComeBack)
{
    for (const qsizetype distance :
        {1, 2, 3, 4, 255, 256, 257, 4095, 4096, 4097, 32766, 32767, 32768, 32769}) {
        const QByteArray start = noise(distance);
        expectRoundTrip(start + start + start.first(std::min<qsizetype>(distance, 100)));
    }
}

TEST(Deflate, RandomTextsComeBack)
{
    Dice dice(21);
    for (int i = 0; i < 300; ++i)
        expectRoundTrip(dice.text(i % 2 ? u"ab"_s : u"mouse.click \"1:2\"\r\n"_s, 3000).toLatin1());
}

TEST(Deflate, IsAboutAsSmallAsTheBestOfZlib)
{
    QFile program(u"/proc/self/exe"_s);
    ASSERT_TRUE(program.open(QIODevice::ReadOnly));
    const QByteArray binary = program.read(1'000'000);
    QByteArray script;
    for (int i = 0; i < 3000; ++i)
        script += "mouse.click \"" + QByteArray::number(i * 7 % 1920) + ':' + QByteArray::number(i % 1080)
            + "\"\r\n";
    for (const QByteArray &content : {binary, script, QByteArray("os.tips \"hello, hello, hello\"\r\n")})
        EXPECT_LT(plum::deflated(content).size(), zlibsSize(content) * 102 / 100 + 4);
}

TEST(Deflate, WhatCannotShrinkGrowsByItsHeadersAlone)
{
    const QByteArray content = noise(200'000);
    EXPECT_LE(plum::deflated(content).size(), content.size() + 50);
}

TEST(PrefixCode, KeepsToTheLongestLengthAndIsComplete)
{
    std::vector<quint32> counts{1, 1}; // each as frequent as all before it: the best code would be a comb
    constexpr quint64 most = 1U << 30;
    while (counts.size() < 40)
        counts.push_back(
            static_cast<quint32>(std::min(std::accumulate(counts.begin(), counts.end(), quint64{0}), most)));
    for (const int longest : {7, 15}) {
        const PrefixCode code = PrefixCode::of(counts, longest);
        double used = 0;
        for (size_t symbol = 0; symbol < counts.size(); ++symbol) {
            EXPECT_GE(code.length(symbol), 1);
            EXPECT_LE(code.length(symbol), longest);
            used += std::ldexp(1.0, -code.length(symbol));
        }
        EXPECT_EQ(used, 1.0);
    }
}

TEST(PrefixCode, FrequentSymbolsHaveTheShorterCodes)
{
    const PrefixCode code = PrefixCode::of(std::vector<quint32>{5, 0, 1, 1, 9}, 15);
    EXPECT_EQ(code.lengths(), (std::vector<quint8>{2, 0, 3, 3, 1}));
    EXPECT_EQ(code.code(4), 0b0U);
    EXPECT_EQ(code.code(0), 0b01U); // "10", its first bit lowest
    EXPECT_EQ(code.code(2), 0b011U);
    EXPECT_EQ(code.code(3), 0b111U);
}

TEST(PrefixCode, TwoSymbolsAtLeastHaveACode)
{
    EXPECT_EQ(PrefixCode::of(std::vector<quint32>{0, 0, 0}, 15).lengths(), (std::vector<quint8>{1, 1, 0}));
    EXPECT_EQ(PrefixCode::of(std::vector<quint32>{0, 0, 8}, 15).lengths(), (std::vector<quint8>{1, 0, 1}));
}

TEST(ZipWriter, PacksWhatGetsSmallerAndStoresTheRest)
{
    plum::ZipWriter writer;
    const QByteArray picture = noise(5000);
    writer.add(u"text"_s, QByteArray(100'000, 'x'), QDateTime::currentDateTime());
    writer.add(u"picture"_s, picture, QDateTime::currentDateTime());
    const QByteArray archive = writer.finish();
    EXPECT_LT(archive.size(), 6000);
    EXPECT_TRUE(archive.contains(picture));
}
