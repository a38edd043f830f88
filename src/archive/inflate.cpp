#include "archive/inflate.h"

#include "archive/inflate_decoder.h"

namespace plum {

using namespace Qt::StringLiterals;

QString inflateMessage(InflateOutcome outcome)
{
    switch (outcome) {
    case InflateOutcome::InputDepleted:
        return u"InStream depleated"_s;
    case InflateOutcome::InvalidBlockSize:
        return u"Invalid block size"_s;
    case InflateOutcome::OutputOverflow:
        return u"OutStream overflow"_s;
    case InflateOutcome::DataError:
        return u"Error in compressed data"_s;
    case InflateOutcome::StaticOverSubscribed:
        return u"Static tree: Huffman tree over subscribe"_s;
    case InflateOutcome::DynamicOverSubscribed:
        return u"Dynamic tree: Huffman tree over subscribe"_s;
    case InflateOutcome::NoLastLength:
        return u"Dynamic tree: no last Length"_s;
    case InflateOutcome::TooManyLengths:
        return u"Dynamic tree: too many Lengths"_s;
    case InflateOutcome::Done:
    case InflateOutcome::ReadFailed:
    case InflateOutcome::WriteFailed:
        break;
    }
    return {};
}

Inflater::Inflater()
    : m_tables(std::make_unique<InflateTables>())
{
}

Inflater::~Inflater() = default;

Inflater::Result Inflater::run(const Stream &stream)
{
    InflateDecoder decoder(stream, *m_tables);
    return decoder.run();
}

namespace {

class MemoryInput final : public InflateInput
{
public:
    explicit MemoryInput(std::span<const quint8> bytes)
        : m_bytes(bytes)
    {
    }

    std::optional<std::span<const quint8>> more(std::span<const quint8> unread) override
    {
        return m_bytes.last(m_bytes.size() - std::exchange(m_given, m_bytes.size()) + unread.size());
    }

private:
    std::span<const quint8> m_bytes;
    size_t m_given = 0;
};

class MemoryOutput final : public InflateOutput
{
public:
    explicit MemoryOutput(std::span<quint8> bytes)
        : m_bytes(bytes)
    {
    }

    std::span<quint8> window() override { return m_bytes; }
    bool take(std::span<const quint8>) override { return true; }

private:
    std::span<quint8> m_bytes;
};

} // namespace

Inflater::Result Inflate(std::span<const quint8> input, std::span<quint8> output, bool deflate64,
    const std::function<void(qint64)> &afterBlock)
{
    MemoryInput from(input);
    MemoryOutput to(output);
    Inflater inflater;
    return inflater.run({.input = from,
        .inputSize = static_cast<qint64>(input.size()),
        .output = to,
        .outputSize = static_cast<qint64>(output.size()),
        .deflate64 = deflate64,
        .afterBlock = afterBlock});
}

} // namespace plum
