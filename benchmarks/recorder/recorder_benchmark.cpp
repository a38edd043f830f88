// What the flight recorder adds to a run's time: the same script without it, with it, and with pictures, in
// turn.

#include "engine/run_start.h"
#include "flight/flight.h"
#include "platform/platform.h"
#include "recording/recording_commands.h"
#include "recording/recording_launcher.h"
#include "script_system.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

enum Mode {
    Without,
    WithRecorder,
    WithPictures,
};

constexpr std::array modes{Without, WithRecorder, WithPictures};

struct Script
{
    const char *name;
    QByteArray text;
    bool isProcessorTime = false; // in place of what a clock on the wall says
};

const std::array scripts{Script{"300 lines on the desktop, 10 ms apart",
                             "//edition:2\nrepeat.times 100\nmouse.move 1500:1000\nkeyboard.key "
                             "shift\nmouse.move 1700:1100\nrepeat.end\n"},
    Script{"2,000,000 lines that compute, processor time",
        "//edition:2\nset.name \"Ann, of the mill\"\nrepeat.times 500000\nset.age 7\nset.greeting $\"Hello "
        "{name}, you are "
        "{age}\"\ntext.replace out,set.greeting,\"n\",\"_\",,,no\nset.who set.name\nrepeat.end\n",
        true}};

struct Cost
{
    double milliseconds = 0;
    qsizetype bytes = 0; // that are kept of the run
};

Cost costOf(Platform &platform, const QString &path, const Script &script, Mode mode)
{
    recording::Log log;
    recording::RecordingLauncher launcher(log);
    recording::RecordingStorePage storePage(log);
    std::optional<Flight> flight;
    if (mode != Without)
        flight.emplace(platform, platform.shell());
    if (mode == WithPictures)
        flight->takePicturesWhere([] { return true; });
    ScriptSystem system({.platform = flight ? flight->platform : platform,
        .shell = flight ? static_cast<Shell &>(flight->shell) : platform.shell(),
        .launcher = launcher,
        .storePage = storePage,
        .executableName = u"plum"_s,
        .searches = flight ? &flight->recorder : nullptr});
    if (flight)
        system.state().observer = &flight->recorder;
    if (!system.starts().prepareFile(path))
        return {};
    QElapsedTimer timer;
    timer.start();
    const std::clock_t processor = std::clock();
    system.starts().runAll();
    const double spent = double(std::clock() - processor) * 1e3 / CLOCKS_PER_SEC;
    return {script.isProcessorTime ? spent : double(timer.nsecsElapsed()) / 1e6,
        flight ? flight->recorder.log().bytes() + flight->recorder.film().bytes() : 0};
}

double medianOf(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    prepareEnvironment(true);
    const QGuiApplication application(argc, argv);
    const std::unique_ptr<Platform> platform = createPlatform(QString::fromLocal8Bit(argv[0]));
    bool isSet = false;
    const int asked = qEnvironmentVariableIntValue("PLUM_BENCH_ROUNDS", &isSet);
    const int rounds = isSet ? asked : 9;
    const QTemporaryDir folder;
    std::puts("| Run (median of the rounds) | without ms | recorded ms | | MB | with pictures ms | | MB |");
    std::puts("|---|---|---|---|---|---|---|---|");
    for (const Script &script : scripts) {
        QFile file(folder.filePath(u"some.wf"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(script.text) != script.text.size())
            return 1;
        file.close();
        costOf(*platform, file.fileName(), script, WithPictures); // what is made when it is first used
        std::array<std::vector<double>, modes.size()> times;
        std::array<std::vector<double>, modes.size()> added; // percent, each against the run beside it
        std::array<double, modes.size()> kept{}; // MB, at most
        const auto run = [&](Mode mode) {
            const Cost cost = costOf(*platform, file.fileName(), script, mode);
            times[mode].push_back(cost.milliseconds);
            kept[mode] = std::max(kept[mode], double(cost.bytes) / (1 << 20));
        };
        for (int round = 0; round < rounds; ++round) {
            for (const Mode mode : modes)
                run(mode);
            for (const Mode mode : modes)
                added[mode].push_back((times[mode].back() / times[Without].back() - 1) * 100);
        }
        std::printf("| %s | %.1f | %.1f | %+.2f %% | %.2f | %.1f | %+.2f %% | %.2f |\n", script.name,
            medianOf(times[Without]), medianOf(times[WithRecorder]), medianOf(added[WithRecorder]),
            kept[WithRecorder], medianOf(times[WithPictures]), medianOf(added[WithPictures]),
            kept[WithPictures]);
    }
    return 0;
}
