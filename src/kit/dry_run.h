#pragma once

#include "engine/launcher.h"
#include "flight/flight_platform.h"
#include "http/loaded_http_client.h"
#include "kit/replay.h"
#include "kit/run_comparison.h"
#include "kit/run_options.h"
#include "kit/scratch_paths.h"
#include "platform/recording/recording_platform.h"
#include "platform/stop_signal.h"
#include "platform/wrapped_platform.h"
#include "recording/recording_commands.h"
#include "recording/recording_launcher.h"
#include "script_system.h"

#include <functional>

namespace plum::kit {

// A run that only says what it would do, in no time: on a desktop that is made up, with copies of the files
// that it names, and with answers that were given before.
class DryRun final : public Launcher
{
public:
    struct Places
    {
        const Paths &paths; // the system's
        QString scratchFolder; // empty; everything that the run writes is below it
        std::optional<FlightLog> record = {}; // of a run that this one is laid beside
    };

    // `print` gets each event with the number of its line in front; `printError` what is wrong, a line each.
    using Print = std::function<void(const QString &line)>;
    DryRun(const Places &places, Print print, Print printError);
    ~DryRun() override;
    Q_DISABLE_COPY_MOVE(DryRun)

    // Comes back when the run has ended, in whichever way. Beside a recorded run it prints lines in place of
    // events: what stands in both with a blank in front, what differs with "~", new lines with "+" and those
    // that are not carried out any more with "-".
    Status run(const DryOptions &options);

    // Who hears what the run does, before it begins.
    void setObserver(RunObserver &observer) { m_scripts.state().observer = &observer; }

    // Called often while the run goes on; may raise the signal.
    void setBreath(std::function<void()> breathe) { m_breathe = std::move(breathe); }

    // Ends the run, in any thread.
    StopSignal &stopSignal() { return m_stop; }

    // The desktop, to be furnished before the run.
    recording::RecordingPlatform &desktop() { return m_recording; }

    QString keywordBoxText() const override { return m_typed; }
    QString inputEntryText() const override { return {}; }
    void showInput(const QString &prompt, const QString &variable) override;
    void showTip(const QString &text) override;
    void showMessage(const Message &message) override { m_writer.showMessage(message); }
    void hideLauncher() override { m_writer.hideLauncher(); }
    void endProcess() override { m_hasEnded = true; }

private:
    class DryPlatform final : public WrappedPlatform
    {
    public:
        DryPlatform(Platform &inner, Paths &paths)
            : WrappedPlatform(inner)
            , m_paths(paths)
        {
        }
        Paths &paths() override { return m_paths; }

    private:
        Paths &m_paths;
    };

    // What a run shows, until it is answered.
    struct Shown
    {
        RunTicket ticket = 0;
        bool isQuestion = false;
        QString variable = {};
    };

    Platform &recorded(const Places &places);
    Status carryOut(const DryOptions &options, const QString &path);
    void runToItsEnd();
    void printComparison();
    QString withoutScratch(QString text) const;
    void note(const QString &event);
    bool answer(const Shown &shown);

    Print m_print;
    Print m_printError;
    recording::RecordingPlatform m_recording;
    QString m_scratchFolder;
    ScratchPaths m_paths;
    DryPlatform m_platform;
    std::optional<Replay> m_replay;
    std::optional<FlightPlatform> m_recordedPlatform; // with a replay
    std::optional<RecordedShell> m_recordedShell;
    StopSignal m_stop; // raised when there are too many events
    recording::RecordingWaiter m_waiter;
    recording::RecordingLauncher m_writer;
    recording::RecordingHttpClient m_http;
    std::optional<LoadedHttpClient> m_network; // where it is allowed
    recording::RecordingProgramRunner m_programs;
    recording::RecordingStorePage m_storePage;
    recording::RecordingNotices m_notices;
    ScriptSystem m_scripts;
    std::function<void()> m_breathe;
    QString m_typed;
    QStringList m_answers;
    std::optional<Shown> m_shown;
    int m_eventsLeft = 0;
    bool m_hasEnded = false;
    bool m_gaveUp = false;
};

} // namespace plum::kit
