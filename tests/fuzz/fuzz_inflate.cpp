// The decoder against the plain one on any input, and against zlib on what zlib takes for a whole stream.
// The first byte chooses the variant and the room for output, the rest is the stream.

#include "archive/inflate.h"
#include "archive/reference_inflate.h"

#include <zlib.h>

#include <cstdlib>
#include <vector>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void compareWithZlib(std::span<const quint8> stream, const std::vector<quint8> &bytes, bool succeeded)
{
    std::vector<quint8> output(bytes.size() + 1);
    z_stream state{};
    require(inflateInit2(&state, -15) == Z_OK);
    std::vector<quint8> input(stream.begin(), stream.end());
    state.next_in = input.data();
    state.avail_in = static_cast<uInt>(input.size());
    state.next_out = output.data();
    state.avail_out = static_cast<uInt>(output.size());
    const int end = inflate(&state, Z_FINISH);
    output.resize(state.total_out);
    inflateEnd(&state);
    if (end == Z_STREAM_END)
        require(succeeded && output == bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const bool deflate64 = data[0] & 1;
    const size_t room = size_t{1} << (8 + (data[0] >> 1) % 12);
    const std::span<const quint8> stream(data + 1, size - 1);

    const auto expected = plum::reference::inflate(stream, static_cast<qint64>(room), deflate64);
    std::vector<quint8> output(room);
    std::vector<qint64> progress;
    const auto result
        = plum::Inflate(stream, output, deflate64, [&](qint64 used) { progress.push_back(used); });
    output.resize(static_cast<size_t>(result.written));
    require(plum::inflateMessage(result.outcome) == expected.message);
    require(output == expected.bytes);
    require(progress == expected.progress);
    if (!deflate64 && result.written < static_cast<qint64>(room))
        compareWithZlib(stream, output, result.outcome == plum::InflateOutcome::Done);
    return 0;
}
