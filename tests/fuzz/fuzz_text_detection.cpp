#include "http/text_detection.h"
#include "platform/linux/linux_text_codec.h"
#include "support/iconv.h"

#include <cstdint>
#include <cstdlib>

namespace {

// The rule of IsUtf8, walked byte by byte as it is described.
bool looksLikeUtf8(const uint8_t *bytes, size_t size)
{
    if (size < 3)
        return false;
    if (bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF)
        return true;
    size_t ascii = 0;
    size_t at = 0;
    while (at < size) {
        if (bytes[at] < 0x80) {
            ++ascii;
            ++at;
        } else if ((bytes[at] & 0xE0) == 0xC0 && at + 1 < size && (bytes[at + 1] & 0xC0) == 0x80) {
            at += 2;
        } else if (at + 2 >= size) {
            return false;
        } else if ((bytes[at] & 0xF0) == 0xE0 && (bytes[at + 1] & 0xC0) == 0x80
            && (bytes[at + 2] & 0xC0) == 0x80) {
            at += 3;
        } else {
            return false;
        }
    }
    return ascii != size;
}

} // namespace

// Detection against a second walk, and text against iconv wherever iconv accepts the bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    plum::LinuxTextCodec codec;
    const bool isUtf8 = plum::IsUtf8(bytes);
    if (isUtf8 != looksLikeUtf8(data, size))
        std::abort();

    const QString text = plum::BytesToText(bytes, codec);
    auto expected = plum::test::decodedByIconv(isUtf8 ? "UTF-8" : "GBK", bytes);
    if (expected && isUtf8 && expected->startsWith(QChar(0xFEFF)))
        expected->remove(0, 1);
    if (expected && text != *expected)
        std::abort();
    codec.fromSystem(bytes);
    return 0;
}
