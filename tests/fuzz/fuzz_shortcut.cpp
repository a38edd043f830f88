#include "platform/linux/desktop_entry.h"
#include "platform/linux/linux_text_codec.h"
#include "platform/shortcut_file.h"

#include <cstdint>
#include <cstdlib>

// No bytes make the shortcut readers read outside them, and a target is never empty.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    plum::LinuxTextCodec codec;
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const auto shortcut = plum::readShortcut(bytes, codec);
    const auto entry = plum::readDesktopEntry(bytes);
    if ((shortcut && shortcut->path.isEmpty()) || (entry && entry->isEmpty()))
        std::abort();
    return 0;
}
