#include "engine/run_start.h"
#include "engine/run_time_error.h"
#include "support/recording_folders.h"
#include "support/script_bench.h"

#include <algorithm>

// Whole scripts on the recording backend: whatever the lines, the run ends, suspends or raises a run-time
// error. A second run may begin inside a wait, and a suspended run is resumed.
//
// Byte 0: bit 0 a command-line run, bit 1 a second run, bits 2 to 6 the wait in which it begins.
// The rest: the script file.

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

constexpr size_t maxSize = 4096;
constexpr qsizetype maxLines = 100;
constexpr int maxWaits = 2000;
constexpr qsizetype maxValue = 4096;
constexpr int resumptions = 3;

// Scripts may loop without end and build texts without bounds; here they are stopped.
struct Enough
{
};

class BoundedHandler final : public Handler
{
public:
    BoundedHandler(recording::ScriptBench &bench, const QString &name)
        : m_bench(bench)
        , m_handler(bench.handler(name))
        , m_stores(name == u"set"_s)
    {
    }

    Next call(const CommandCall &call) override
    {
        const Next next = m_handler.call(call);
        const QString variable = m_stores ? call.command() : call.arg(0);
        if (m_bench.variable(variable).size() > maxValue)
            throw Enough();
        return next;
    }
    QList<CommandInfo> commands() const override { return m_handler.commands(); }

private:
    recording::ScriptBench &m_bench;
    Handler &m_handler;
    bool m_stores; // the word itself is the variable
};

template <typename Run> void ignoringErrors(Run &&run)
{
    try {
        run();
    } catch (const RunTimeError &) {
        // As expected of a bad script.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const uint8_t control = data[0];
    QStringList lines = splitLines(QString::fromUtf8(
        reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(std::min(size - 1, maxSize))));
    lines.resize(std::min(lines.size(), maxLines));

    recording::ScriptBench bench;
    BoundedHandler set(bench, u"set"_s);
    BoundedHandler text(bench, u"text"_s);
    bench.loop.addNamespace(u"set"_s, set);
    bench.loop.addNamespace(u"text"_s, text);
    bench.launcher.keywordBox = u"mail Ann,Bob"_s;
    bench.state.runctx[1] = (control & 1) != 0 ? u"jb"_s : u"bao"_s;
    const recording::RecordingFolders folders(bench.platform.paths());
    RunStart start(bench.state, bench.loop, bench.files, bench.platform.paths(), folders);

    int waits = 0;
    const int secondRun = (control & 2) != 0 ? (control >> 2) & 31 : -1;
    bench.waiter.records = false;
    bench.waiter.onWait = [&] {
        bench.platform.log.clear();
        if (waits++ == maxWaits || bench.platform.clipboard().content.size() > maxValue)
            throw Enough();
        if (waits == secondRun + 1) {
            std::ranges::reverse(bench.state.runlist);
            bench.state.runlist.resize(bench.state.runlist.size() / 2);
            ignoringErrors([&] { start.runAll(); });
        }
    };

    try {
        bench.state.runlist = lines;
        ignoringErrors([&] { start.runAll(); });
        for (int resumption = 0; resumption < resumptions; ++resumption)
            ignoringErrors([&] { start.resume(); });
    } catch (const Enough &) {
        // A script that goes on for ever is no fault of the engine.
    }
    return 0;
}
