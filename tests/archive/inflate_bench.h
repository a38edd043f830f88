#pragma once

#include "archive/inflate.h"
#include "archive/reference_inflate.h"
#include "archive/zip_builder.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace plum::testing {

using Bytes = std::vector<quint8>;

inline std::span<const quint8> span(const QByteArray &bytes)
{
    return {reinterpret_cast<const quint8 *>(bytes.data()), static_cast<size_t>(bytes.size())};
}

// Writes bits as a DEFLATE stream has them.
class BitWriter
{
public:
    BitWriter &bits(quint32 value, int count)
    {
        for (int i = 0; i < count; ++i)
            bit(value >> i & 1);
        return *this;
    }

    // A prefix code, its first bit first.
    BitWriter &code(quint32 value, int count)
    {
        for (int i = count - 1; i >= 0; --i)
            bit(value >> i & 1);
        return *this;
    }

    BitWriter &align()
    {
        while (m_count % 8 != 0)
            bit(0);
        return *this;
    }

    BitWriter &literal(quint32 byte)
    {
        return byte < 144 ? code(0x30 + byte, 8) : code(0x190 + byte - 144, 9);
    }

    BitWriter &endOfBlock() { return code(0, 7); }

    QByteArray bytes;

private:
    void bit(quint32 value)
    {
        if (m_count % 8 == 0)
            bytes.append('\0');
        bytes.back() = static_cast<char>(static_cast<quint8>(bytes.back()) | value << m_count % 8);
        ++m_count;
    }

    int m_count = 0;
};

// Pieces as small as can be, and a window that has to be used again and again.
class DripInput final : public InflateInput
{
public:
    DripInput(std::span<const quint8> bytes, size_t piece)
        : m_bytes(bytes)
        , m_piece(piece)
    {
    }

    std::optional<std::span<const quint8>> more(std::span<const quint8> unread) override
    {
        const size_t start = m_given - unread.size();
        m_given = std::min(m_given + m_piece, m_bytes.size());
        m_held.assign(m_bytes.begin() + static_cast<std::ptrdiff_t>(start),
            m_bytes.begin() + static_cast<std::ptrdiff_t>(m_given));
        return m_held;
    }

private:
    std::span<const quint8> m_bytes;
    size_t m_piece;
    size_t m_given = 0;
    Bytes m_held;
};

class SmallWindow final : public InflateOutput
{
public:
    std::span<quint8> window() override { return m_window; }
    bool take(std::span<const quint8> bytes) override
    {
        taken.insert(taken.end(), bytes.begin(), bytes.end());
        return taken.size() <= most;
    }

    Bytes taken;
    size_t most = SIZE_MAX;

private:
    Bytes m_window = Bytes(128 * 1024);
};

// Decodes in both ways, in memory and through windows, and expects what the reference has.
inline reference::Inflated decode(const QByteArray &input, qint64 outputSize, bool deflate64 = false)
{
    const auto expected = reference::inflate(span(input), outputSize, deflate64);

    Bytes output(static_cast<size_t>(outputSize));
    std::vector<qint64> progress;
    const auto result
        = Inflate(span(input), output, deflate64, [&](qint64 used) { progress.push_back(used); });
    EXPECT_EQ(inflateMessage(result.outcome), expected.message);
    EXPECT_EQ(progress, expected.progress);
    output.resize(static_cast<size_t>(result.written));
    EXPECT_TRUE(output == expected.bytes) << result.written << " of " << expected.bytes.size();

    for (const size_t piece : {size_t{1}, size_t{7}, size_t{1000}}) {
        Inflater inflater;
        DripInput from(span(input), piece);
        SmallWindow to;
        progress.clear();
        const auto windowed = inflater.run({.input = from,
            .inputSize = input.size(),
            .output = to,
            .outputSize = outputSize,
            .deflate64 = deflate64,
            .afterBlock = [&](qint64 used) { progress.push_back(used); }});
        EXPECT_EQ(windowed.outcome, result.outcome);
        EXPECT_EQ(windowed.written, static_cast<qint64>(expected.bytes.size()));
        EXPECT_EQ(progress, expected.progress);
        EXPECT_TRUE(to.taken == expected.bytes);
    }
    return expected;
}

inline QString text(const Bytes &bytes)
{
    return QString::fromLatin1(
        reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

inline QByteArray stored(const QByteArray &content, bool isLast, quint32 complementError = 0)
{
    const auto size = static_cast<quint32>(content.size());
    return QByteArray(1, isLast ? '\1' : '\0') + littleEndian16(size)
        + littleEndian16((~size & 0xFFFF) ^ complementError) + content;
}

// The head of a dynamic block: as many codes as given, and the lengths of the code length codes 0 to 18.
inline BitWriter dynamicHead(quint32 literals, quint32 distances, const std::array<quint32, 19> &lengths)
{
    constexpr std::array<size_t, 19> order{16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    BitWriter writer;
    writer.bits(1, 1).bits(2, 2).bits(literals - 257, 5).bits(distances - 1, 5).bits(15, 4);
    for (const size_t symbol : order)
        writer.bits(lengths[symbol], 3);
    return writer;
}

inline QByteArray sampleText(qsizetype size)
{
    QRandomGenerator random(7);
    QByteArray bytes;
    while (bytes.size() < size) {
        static constexpr std::array words{
            "launch", "the", "keyword", "script ", " of", "\r\n", "window", "0"};
        bytes += words[static_cast<size_t>(random.bounded(static_cast<int>(words.size())))];
        bytes += static_cast<char>(random.bounded(97, 123));
    }
    return bytes.first(size);
}

} // namespace plum::testing
