// A compressed page that is taken for whole is what zlib makes of it, and no page is larger than its limit.
// The first byte chooses the encoding, the rest is the body.

#include "transport/content_decoding.h"

#include <zlib.h>

#include <cstdint>
#include <cstdlib>
#include <optional>

namespace {

constexpr qint64 most = 1 << 20;

// What zlib makes of one gzip member at the beginning of the body.
std::optional<QByteArray> byZlib(const QByteArray &body)
{
    z_stream state{};
    if (inflateInit2(&state, 15 + 16) != Z_OK)
        std::abort();
    QByteArray input = body;
    QByteArray output(most, '\0');
    state.next_in = reinterpret_cast<Bytef *>(input.data());
    state.avail_in = static_cast<uInt>(input.size());
    state.next_out = reinterpret_cast<Bytef *>(output.data());
    state.avail_out = static_cast<uInt>(output.size());
    const int end = inflate(&state, Z_FINISH);
    output.truncate(static_cast<qsizetype>(state.total_out));
    inflateEnd(&state);
    return end == Z_STREAM_END ? std::optional(output) : std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    const bool isGzip = data[0] & 1;
    const QByteArray body(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size) - 1);
    const auto content = plum::decodedContent(isGzip ? "gzip" : "deflate", body, most);
    if (content && content->size() > most)
        std::abort();
    if (isGzip && content) {
        // zlib reads one member, and is stricter with the header.
        if (const auto expected = byZlib(body); expected && !content->startsWith(*expected))
            std::abort();
    }
    return 0;
}
