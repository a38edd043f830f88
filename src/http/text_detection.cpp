#include "http/text_detection.h"

#include "platform/text_codec.h"

#include <cstring>

namespace plum {

namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

quint8 byteAt(QByteArrayView bytes, qsizetype at)
{
    return static_cast<quint8>(bytes[at]);
}

bool continues(QByteArrayView bytes, qsizetype at)
{
    return at < bytes.size() && (byteAt(bytes, at) & 0xC0) == 0x80;
}

// The number of ASCII bytes from `at` on, eight at a time: most of a page is ASCII.
qsizetype asciiRun(QByteArrayView bytes, qsizetype at)
{
    const qsizetype start = at;
    for (; bytes.size() - at >= 8; at += 8) {
        quint64 eight;
        std::memcpy(&eight, bytes.data() + at, sizeof eight);
        if ((eight & Q_UINT64_C(0x8080808080808080)) != 0)
            break;
    }
    while (at < bytes.size() && byteAt(bytes, at) < 0x80)
        ++at;
    return at - start;
}

} // namespace

bool IsUtf8(QByteArrayView bytes)
{
    const qsizetype size = bytes.size();
    if (size < 3)
        return false;
    if (bytes.startsWith(byteOrderMark))
        return true;

    qsizetype at = 0;
    qsizetype ascii = 0;
    while (at < size) {
        const quint8 byte = byteAt(bytes, at);
        if (byte < 0x80) {
            const qsizetype run = asciiRun(bytes, at);
            ascii += run;
            at += run;
        } else if ((byte & 0xE0) == 0xC0 && continues(bytes, at + 1)) {
            at += 2;
        } else if ((byte & 0xF0) == 0xE0 && continues(bytes, at + 1) && continues(bytes, at + 2)) {
            at += 3;
        } else {
            return false;
        }
    }
    return ascii < size;
}

QString BytesToText(QByteArrayView bytes, TextCodec &codec)
{
    return IsUtf8(bytes) ? codec.fromUtf8(bytes) : codec.fromGb2312(bytes);
}

} // namespace plum
