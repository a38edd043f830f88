#include "commands/path_resolution.h"
#include "engine/run_state.h"
#include "platform/recording/recording_platform.h"
#include "support/recording_folders.h"

#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

// Path, script and keyword, one a line. Whatever they are, the result holds no "/" that the path brought, a
// path without a placeholder keeps its length, and one with a placeholder ends as the path does.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QStringList lines
        = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)).split(u'\n');
    const QString path = lines.value(0);
    plum::recording::RecordingPaths paths;
    const plum::recording::RecordingFolders folders(paths);
    plum::RunState state;
    state.runctx[0] = lines.value(1);
    state.currentKeyword = lines.value(2);

    const QString resolved = plum::ResolvePath(path, state, folders);
    const QString written = QString(path).replace(u'/', u'\\');
    const QString head = written.section(u'\\', 0, 0);
    const bool isPlaceholder = head == "_pfold_"_L1 || head == "_ppfold_"_L1;
    if (!isPlaceholder) {
        if (resolved != written)
            std::abort();
        return 0;
    }
    const qsizetype separator = written.indexOf(u'\\');
    if (separator >= 0 && !resolved.endsWith(QStringView(written).sliced(separator)))
        std::abort();
    if (separator >= 0 && !state.currentKeyword.isEmpty()
        && !resolved.startsWith(paths.folder + u"\\config\\apps\\"_s + state.currentKeyword)) {
        std::abort();
    }
    return 0;
}
