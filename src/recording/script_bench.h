#pragma once

#include "platform/recording/recording_platform.h"
#include "recording/recording_launcher.h"
#include "script_system.h"

#include <functional>
#include <memory>

namespace plum::recording {

class RecordingHttpClient;
class RecordingProgramRunner;

// A whole engine on the recording backend: give it lines, run them, look at the log and the variables.
class ScriptBench
{
public:
    // `refused` hears what limited runs were refused; without it no run is limited.
    explicit ScriptBench(std::function<void(const QString &sentence)> refused = {});
    ~ScriptBench();

    // Runs `lines` as one script from the first to the last, as the launcher would.
    void run(const QStringList &lines);

    // Runs `lines` so that the variables are still there afterwards: the last line is never reached.
    void runKeepingVariables(const QStringList &lines)
    {
        run(lines + QStringList{QStringLiteral("input.text \"\"")});
    }

    QStringList events() const { return platform.log.lines(); }

    // The events without the pause before each line and the input box at the end.
    QStringList eventsOf(const QString &line);

    QString variable(const QString &name) const { return state.vardict.GetVar(name); }

    // The commands of a namespace.
    Handler &handler(const QString &name) { return system.engine().handler(name); }

    RecordingPlatform platform;
    RecordingWaiter waiter{platform.log};
    RecordingLauncher launcher{platform.log};

private:
    struct Replaced;
    std::unique_ptr<Replaced> m_replaced;

public:
    RecordingHttpClient &http;
    RecordingProgramRunner &programs;
    ScriptSystem system;
    RunState &state = system.state();
    TextFiles &files = system.engine().files();
    const ArgumentReader &reader = system.engine().reader();
    RunLoop &loop = system.engine().loop();
};

} // namespace plum::recording
