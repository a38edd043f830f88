#include "transport/content_decoding.h"

#include "archive/inflate.h"
#include "archive/zip_writer.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <vector>

namespace plum {

namespace {

enum class Format { None, Gzip, Deflate };

Format formatOf(const QByteArray &encoding)
{
    const QByteArray name = encoding.toLower();
    if (name == "gzip" || name == "x-gzip")
        return Format::Gzip;
    return name == "deflate" ? Format::Deflate : Format::None;
}

// The decoder reads zeros behind the end of its input without a word. It is therefore shown some more zeros
// than there are bytes, so that its position tells when it has gone past the end.
class PaddedInput final : public InflateInput
{
public:
    static constexpr qsizetype padding = 64; // bytes

    explicit PaddedInput(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    std::optional<std::span<const quint8>> more(std::span<const quint8> unread) override
    {
        if (m_step == Step::Bytes && !m_bytes.isEmpty()) {
            m_step = Step::Padding;
            return std::span(reinterpret_cast<const quint8 *>(m_bytes.data()), size_t(m_bytes.size()));
        }
        if (m_step == Step::End)
            return unread;
        m_step = Step::End;
        m_tail.assign(unread.begin(), unread.end());
        m_tail.resize(unread.size() + padding);
        return m_tail;
    }

private:
    enum class Step { Bytes, Padding, End };

    QByteArrayView m_bytes;
    Step m_step = Step::Bytes;
    std::vector<quint8> m_tail;
};

class GrowingOutput final : public InflateOutput
{
public:
    explicit GrowingOutput(QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    std::span<quint8> window() override { return m_window; }

    bool take(std::span<const quint8> bytes) override
    {
        m_bytes.append(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
        return true;
    }

private:
    static constexpr size_t windowSize = 384 * 1024;

    QByteArray &m_bytes;
    std::vector<quint8> m_window = std::vector<quint8>(windowSize);
};

// Appends to `content` what a raw stream at the beginning of `body` holds, and returns how many bytes of the
// body it takes; nothing when it is damaged, cut or too large.
std::optional<qsizetype> inflateInto(QByteArray &content, QByteArrayView body, qint64 most)
{
    PaddedInput input(body);
    GrowingOutput output(content);
    qint64 used = 0;
    Inflater inflater;
    const auto result = inflater.run({.input = input,
        .inputSize = body.size() + PaddedInput::padding,
        .output = output,
        .outputSize = most - content.size(),
        .afterBlock = [&used](qint64 position) { used = position; }});
    if (result.outcome != InflateOutcome::Done || used > body.size())
        return std::nullopt;
    return used;
}

// The length of a gzip member's header; nothing when it is none or is cut.
std::optional<qsizetype> gzipHeader(QByteArrayView bytes)
{
    constexpr qsizetype fixedSize = 10;
    constexpr int hasChecksum = 2;
    constexpr int hasExtra = 4;
    constexpr int hasName = 8;
    constexpr int hasComment = 16;
    if (bytes.size() < fixedSize || !bytes.startsWith("\x1f\x8b\x08"))
        return std::nullopt;
    const int flags = static_cast<quint8>(bytes[3]);
    qsizetype size = fixedSize;
    if (flags & hasExtra) {
        if (bytes.size() < size + 2)
            return std::nullopt;
        size += 2 + qFromLittleEndian<quint16>(bytes.data() + size);
    }
    for (const int text : {hasName, hasComment}) {
        if (!(flags & text))
            continue;
        const qsizetype end = size < bytes.size() ? bytes.indexOf('\0', size) : -1;
        if (end < 0)
            return std::nullopt;
        size = end + 1;
    }
    if (flags & hasChecksum)
        size += 2;
    return size <= bytes.size() ? std::optional(size) : std::nullopt;
}

// One member after the other, as they may stand behind each other; other bytes behind the last one do not
// count.
std::optional<QByteArray> gunzipped(QByteArrayView body, qint64 most)
{
    constexpr qsizetype trailerSize = 8;
    QByteArray content;
    bool isFirst = true;
    for (std::optional<qsizetype> header = gzipHeader(body); isFirst || header; header = gzipHeader(body)) {
        if (!header)
            return std::nullopt;
        body = body.sliced(*header);
        const qsizetype before = content.size();
        const std::optional<qsizetype> used = inflateInto(content, body, most);
        if (!used || body.size() - *used < trailerSize)
            return std::nullopt;
        const char *const trailer = body.data() + *used;
        const QByteArrayView member = QByteArrayView(content).sliced(before);
        if (qFromLittleEndian<quint32>(trailer) != crc32(member)
            || qFromLittleEndian<quint32>(trailer + 4) != static_cast<quint32>(member.size()))
            return std::nullopt;
        body = body.sliced(*used + trailerSize);
        isFirst = false;
    }
    return content;
}

quint32 adler32(QByteArrayView bytes)
{
    constexpr quint32 modulus = 65521;
    quint32 low = 1;
    quint32 high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<quint8>(byte)) % modulus;
        high = (high + low) % modulus;
    }
    return high << 16 | low;
}

// With the frame that the encoding should have, or raw as some servers send it.
std::optional<QByteArray> undeflated(QByteArrayView body, qint64 most)
{
    constexpr qsizetype headerSize = 2;
    constexpr qsizetype trailerSize = 4;
    const auto isFramed = [&] {
        return body.size() >= headerSize && (body[0] & 0x0F) == 8 && !(body[1] & 0x20)
            && qFromBigEndian<quint16>(body.data()) % 31 == 0;
    };
    QByteArray content;
    if (!isFramed())
        return inflateInto(content, body, most) ? std::optional(content) : std::nullopt;
    body = body.sliced(headerSize);
    const std::optional<qsizetype> used = inflateInto(content, body, most);
    const bool isWhole = used && body.size() - *used >= trailerSize
        && qFromBigEndian<quint32>(body.data() + *used) == adler32(content);
    return isWhole ? std::optional(content) : std::nullopt;
}

} // namespace

bool tellsItsEnd(const QByteArray &encoding)
{
    return formatOf(encoding) != Format::None;
}

std::optional<QByteArray> decodedContent(const QByteArray &encoding, const QByteArray &body, qint64 most)
{
    const Format format = formatOf(encoding);
    if (format == Format::None || body.isEmpty())
        return body;
    return format == Format::Gzip ? gunzipped(body, most) : undeflated(body, most);
}

} // namespace plum
