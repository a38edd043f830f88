#include "engine/text_files.h"
#include "library/settings_file.h"
#include "platform/linux/linux_text_codec.h"

#include <cstdint>
#include <cstdlib>

// Whatever a settings file holds: a value that is written into it is read back, and the same write again
// changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    plum::LinuxTextCodec codec;
    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    plum::profileValue(content, u"hotkey", u"hotkey", codec);
    const QByteArray written = plum::withProfileValue(content, u"hotkey", u"hotkey", u"Ctrl+Q", codec);
    if (plum::profileValue(written, u"hotkey", u"hotkey", codec) != QStringView(u"Ctrl+Q"))
        std::abort();
    if (plum::withProfileValue(written, u"hotkey", u"hotkey", u"Ctrl+Q", codec) != written)
        std::abort();
    plum::splitLines(codec.fromSystem(content));
    return 0;
}
