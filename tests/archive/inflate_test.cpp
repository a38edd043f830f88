#include "archive/inflate_bench.h"

#include "archive/inflate_tables.h"

#include <numeric>

using namespace Qt::StringLiterals;
using namespace plum::testing;
using plum::InflateOutcome;

TEST(Inflate, DecodesStoredFixedAndDynamicBlocks)
{
    EXPECT_EQ(text(decode(stored("hello", true), 5).bytes), u"hello"_s);
    EXPECT_EQ(text(decode(deflated("aaaaaaaaaa"), 10).bytes), u"aaaaaaaaaa"_s);
    const QByteArray sample = sampleText(200000);
    for (const int level : {1, 6, 9}) {
        const auto result = decode(deflated(sample, level), sample.size());
        EXPECT_EQ(result.message, QString());
        EXPECT_TRUE(text(result.bytes) == QString::fromLatin1(sample));
    }
}

TEST(Inflate, DecodesAnEmptyStream)
{
    EXPECT_EQ(decode(QByteArray("\x03\x00", 2), 0).message, QString());
}

TEST(Inflate, LeavesTheRestOfTheOutputAloneWhenLessComesOut)
{
    const auto result = decode(stored("abc", true), 10);
    EXPECT_EQ(result.message, QString());
    EXPECT_EQ(result.bytes.size(), 3U);
}

TEST(Inflate, GivesBackUnusedBytesBeforeAStoredBlock)
{
    BitWriter writer;
    writer.bits(0, 1).bits(1, 2).literal('a').literal('b').endOfBlock();
    writer.bits(1, 1).bits(0, 2).align();
    const QByteArray stream = writer.bytes + stored("stored", true).sliced(1);
    EXPECT_EQ(text(decode(stream, 8).bytes), u"abstored"_s);
}

TEST(Inflate, ReadsZeroBitsPastTheEnd)
{
    // The end-of-block code is all zeros: cutting it off changes nothing.
    BitWriter writer;
    writer.bits(1, 1).bits(1, 2).literal('x');
    const auto result = decode(writer.bytes, 1);
    EXPECT_EQ(result.message, QString());
    EXPECT_EQ(text(result.bytes), u"x"_s);
}

TEST(Inflate, FailsOnEmptyInputInAStoredBlock)
{
    EXPECT_EQ(decode({}, 4).message, u"InStream depleated"_s);
}

TEST(Inflate, FailsWhenAStoredHeaderIsCutOff)
{
    EXPECT_EQ(decode(stored("hello", true).first(4), 5).message, u"InStream depleated"_s);
}

TEST(Inflate, FailsWhenAStoredBlockIsCutOffAndWritesNothingOfIt)
{
    const auto result = decode(stored("one", false) + stored("hello", true).chopped(1), 8);
    EXPECT_EQ(result.message, u"InStream depleated"_s);
    EXPECT_EQ(text(result.bytes), u"one"_s);
}

TEST(Inflate, FailsWhenTheLengthsOfAStoredBlockDisagree)
{
    EXPECT_EQ(decode(stored("hello", true, 0x10), 5).message, u"Invalid block size"_s);
}

TEST(Inflate, FailsWhenAStoredBlockHasNoRoom)
{
    EXPECT_EQ(decode(stored("hello", true), 4).message, u"OutStream overflow"_s);
}

TEST(Inflate, FailsWhenLiteralsOrCopiesHaveNoRoom)
{
    BitWriter writer;
    writer.bits(1, 1).bits(1, 2).literal('a').literal('b').endOfBlock();
    const auto literals = decode(writer.bytes, 1);
    EXPECT_EQ(literals.message, u"OutStream overflow"_s);
    EXPECT_EQ(text(literals.bytes), u"a"_s);

    const auto copies = decode(deflated(QByteArray(1000, 'a')), 700);
    EXPECT_EQ(copies.message, u"OutStream overflow"_s);
}

TEST(Inflate, FailsOnBlockTypeThree)
{
    EXPECT_EQ(decode("\x07", 4).message, u"Error in compressed data"_s);
}

TEST(Inflate, FailsOnADistanceBeforeTheStart)
{
    BitWriter writer;
    writer.bits(1, 1).bits(1, 2).literal('a').code(1, 7).code(4, 5).bits(0, 1).endOfBlock();
    const auto result = decode(writer.bytes, 100);
    EXPECT_EQ(result.message, u"Error in compressed data"_s);
    EXPECT_EQ(text(result.bytes), u"a"_s);
}

TEST(Inflate, FailsOnLengthAndDistanceSymbolsThatDoNotExist)
{
    BitWriter length;
    length.bits(1, 1).bits(1, 2).literal('a').code(0xC6, 8).code(0, 5).endOfBlock();
    EXPECT_EQ(decode(length.bytes, 100).message, u"Error in compressed data"_s);

    BitWriter distance;
    distance.bits(1, 1).bits(1, 2).literal('a').code(1, 7).code(30, 5).bits(0, 16).endOfBlock();
    EXPECT_EQ(decode(distance.bytes, 100).message, u"Error in compressed data"_s);
}

TEST(Inflate, FailsOnAnOverSubscribedCode)
{
    std::array<quint32, 19> lengths{};
    lengths[0] = lengths[1] = lengths[2] = 1;
    EXPECT_EQ(decode(dynamicHead(257, 1, lengths).bytes, 10).message,
        u"Dynamic tree: Huffman tree over subscribe"_s);
}

TEST(Inflate, FailsOnAnOverSubscribedLiteralCode)
{
    // All 257 literal lengths are 1.
    std::array<quint32, 19> lengths{};
    lengths[0] = lengths[1] = 1;
    BitWriter writer = dynamicHead(257, 1, lengths);
    for (int i = 0; i < 258; ++i)
        writer.code(1, 1);
    EXPECT_EQ(decode(writer.bytes, 10).message, u"Dynamic tree: Huffman tree over subscribe"_s);
}

TEST(Inflate, NamesTheFixedTreeInItsMessage)
{
    EXPECT_EQ(plum::inflateMessage(InflateOutcome::StaticOverSubscribed),
        u"Static tree: Huffman tree over subscribe"_s);
    plum::DistanceTable table;
    Bytes lengths(32, 5);
    EXPECT_TRUE(table.build(lengths, plum::distanceMeanings(false)));
    lengths[3] = 4;
    EXPECT_FALSE(table.build(lengths, plum::distanceMeanings(false)));
}

TEST(Inflate, FailsWhenTheFirstCodeLengthIsARepeat)
{
    std::array<quint32, 19> lengths{};
    lengths[0] = lengths[16] = 1;
    BitWriter writer = dynamicHead(257, 1, lengths);
    writer.code(1, 1).bits(0, 2);
    EXPECT_EQ(decode(writer.bytes, 10).message, u"Dynamic tree: no last Length"_s);
}

TEST(Inflate, FailsWhenARepeatRunsPastTheLengths)
{
    std::array<quint32, 19> lengths{};
    lengths[0] = lengths[18] = 1;
    BitWriter writer = dynamicHead(257, 1, lengths);
    writer.code(1, 1).bits(127, 7).code(1, 1).bits(127, 7);
    EXPECT_EQ(decode(writer.bytes, 10).message, u"Dynamic tree: too many Lengths"_s);
}

TEST(Inflate, AcceptsIncompleteCodes)
{
    // One literal ('A') and end of block with codes 00 and 01, no distance at all.
    std::array<quint32, 19> lengths{};
    lengths[0] = lengths[18] = lengths[2] = 2;
    BitWriter writer = dynamicHead(257, 1, lengths);
    const auto zeros = [&writer](quint32 count) { writer.code(2, 2).bits(count - 11, 7); };
    zeros(65); // up to 'A'
    writer.code(1, 2);
    zeros(138);
    zeros(52); // up to 256
    writer.code(1, 2);
    writer.code(0, 2); // no distance
    BitWriter unassigned = writer;
    writer.code(0, 2).code(0, 2).code(1, 2);
    const auto result = decode(writer.bytes, 2);
    EXPECT_EQ(result.message, QString());
    EXPECT_EQ(text(result.bytes), u"AA"_s);

    unassigned.code(0, 2).code(3, 2);
    const auto failed = decode(unassigned.bytes, 2);
    EXPECT_EQ(failed.message, u"Error in compressed data"_s);
    EXPECT_EQ(text(failed.bytes), u"A"_s);
}

TEST(Inflate, CopiesOverlappingPatternsOfEveryLengthAndDistance)
{
    QByteArray sample;
    for (int distance = 1; distance <= 40; ++distance) {
        QByteArray pattern(distance, '\0');
        std::iota(pattern.begin(), pattern.end(), static_cast<char>(distance));
        for (int length = 3; length <= 258; length += 17)
            sample += pattern.repeated(length / distance + 2).first(length + distance);
    }
    decode(deflated(sample, 9), sample.size());
}

TEST(Inflate, Deflate64HasLongLengthsAndFarDistances)
{
    // A literal, then a copy of 3 + 65535 bytes from one byte back, then one over the farthest distance.
    BitWriter writer;
    writer.bits(1, 1).bits(1, 2).literal('z').code(0xC5, 8).bits(65535, 16).code(0, 5);
    writer.code(1, 7).code(31, 5).bits(16383 - 3, 14).endOfBlock();
    const auto result = decode(writer.bytes, 65542, true);
    EXPECT_EQ(result.message, QString());
    EXPECT_EQ(result.bytes.size(), 1U + 65538 + 3);
    EXPECT_NE(decode(writer.bytes, 65542, false).message, QString());
}

TEST(Inflate, KeepsEnoughHistoryForTheFarthestDistance)
{
    BitWriter writer;
    writer.bits(0, 1).bits(0, 2).align();
    QByteArray stream;
    QRandomGenerator random(3);
    QByteArray block(65535, '\0');
    for (int i = 0; i < 6; ++i) {
        for (char &byte : block)
            byte = static_cast<char>(random.generate());
        stream += stored(block, false);
    }
    BitWriter tail;
    tail.bits(1, 1).bits(1, 2).code(1, 7).code(31, 5).bits(16383, 14).endOfBlock();
    const auto result = decode(stream + tail.bytes, 6 * 65535 + 3, true);
    EXPECT_EQ(result.message, QString());
}

TEST(Inflate, ReportsWhenTheOutputCannotBeKept)
{
    const QByteArray stream = deflated(sampleText(600000));
    plum::Inflater inflater;
    DripInput from(span(stream), 4096);
    SmallWindow to;
    to.most = 1000;
    const auto result = inflater.run(
        {.input = from, .inputSize = stream.size(), .output = to, .outputSize = 600000, .deflate64 = false});
    EXPECT_EQ(result.outcome, InflateOutcome::WriteFailed);
}

TEST(Inflate, EqualsTheReferenceOnEveryTruncationAndEveryFlippedBit)
{
    const QByteArray sample = sampleText(600);
    for (const int level : {0, 1, 9}) {
        const QByteArray stream = deflated(sample, level);
        for (qsizetype size = 0; size <= stream.size(); ++size)
            decode(stream.first(size), sample.size());
        for (qsizetype bit = 0; bit < stream.size() * 8; ++bit) {
            QByteArray damaged = stream;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
            decode(damaged, sample.size());
            decode(damaged, sample.size(), true);
        }
    }
}

TEST(Inflate, EqualsTheReferenceOnRandomDamageOfALongStream)
{
    const QByteArray sample = sampleText(150000);
    const QByteArray stream = deflated(sample, 6);
    QRandomGenerator random(11);
    for (int round = 0; round < 60; ++round) {
        QByteArray damaged = stream;
        const qsizetype bit = random.bounded(static_cast<int>(damaged.size()) * 8);
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        decode(damaged, sample.size(), round % 2 == 1);
    }
}
