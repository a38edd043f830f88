#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace plum {

struct InflateTables;

// How the decoding of one stream ended.
enum class InflateOutcome {
    Done,
    InputDepleted, // a stored block runs past the input
    InvalidBlockSize, // a stored block's two lengths disagree
    OutputOverflow, // more comes out than the output has room for
    DataError, // block type 3, a code without a symbol, a distance back beyond the start
    StaticOverSubscribed,
    DynamicOverSubscribed,
    NoLastLength, // a repeat code with nothing to repeat
    TooManyLengths, // a repeat past the end of the code lengths
    ReadFailed, // the input could not be read
    WriteFailed, // the output could not be written
};

// The message of a decoding error; empty for an end that is none or is not the data's fault.
QString inflateMessage(InflateOutcome outcome);

// Where the compressed bytes come from.
class InflateInput
{
public:
    virtual ~InflateInput() = default;

    // The bytes that follow those handed out so far, with `unread`, the last of those, in front of them in
    // one piece. A piece no longer than `unread` says that there are no more. Valid until the next call.
    // Nothing when reading fails.
    virtual std::optional<std::span<const quint8>> more(std::span<const quint8> unread) = 0;
};

// Where the decoded bytes go. They are decoded into `window`; when it is full, they are taken and the
// window is used again, its last 65,536 bytes kept as history at its beginning.
class InflateOutput
{
public:
    virtual ~InflateOutput() = default;

    // At least 128 KiB, or room for the whole output.
    virtual std::span<quint8> window() = 0;

    // Gets all decoded bytes in order, also those before an error. False when they cannot be kept.
    virtual bool take(std::span<const quint8> bytes) = 0;
};

// Decodes raw DEFLATE and Deflate64 streams. Input past the end reads as zero bits and is no error, since
// only stored blocks say how long they are; codes may be incomplete, checksums are not looked at.
// What is decoded before an error is delivered. The memory used does not depend on the stream.
class Inflater
{
public:
    Inflater();
    ~Inflater();

    struct Stream
    {
        InflateInput &input;
        qint64 inputSize; // bytes
        InflateOutput &output;
        qint64 outputSize; // the most that may come out, bytes
        bool deflate64 = false;
        // Called after every block with the number of input bytes used so far, if set.
        std::function<void(qint64)> afterBlock = {};
    };

    struct Result
    {
        InflateOutcome outcome;
        qint64 written; // bytes delivered
    };

    Result run(const Stream &stream);

private:
    std::unique_ptr<InflateTables> m_tables; // too large for a stack, and the fixed ones are kept
};

// The same from memory to memory: writes to `output` and returns how it ended.
Inflater::Result Inflate(std::span<const quint8> input, std::span<quint8> output, bool deflate64,
    const std::function<void(qint64)> &afterBlock = {});

} // namespace plum
