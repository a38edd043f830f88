#pragma once

#include "commands/file_commands.h"
#include "commands/keyboard_commands.h"
#include "commands/mouse_clicks.h"
#include "commands/mouse_commands.h"
#include "commands/net_commands.h"
#include "commands/os_commands.h"
#include "commands/webbox_commands.h"
#include "commands/window_commands.h"
#include "engine/argument_reader.h"
#include "engine/input_commands.h"
#include "engine/print_commands.h"
#include "engine/run_loop.h"
#include "engine/run_state.h"
#include "engine/set_command.h"
#include "engine/text_commands.h"
#include "engine/text_files.h"
#include "engine/time_commands.h"
#include "http/file_upload.h"
#include "support/printers.h"
#include "support/recording/recording_commands.h"
#include "support/recording/recording_platform.h"

namespace plum::recording {

// A whole engine on the recording backend: give it lines, run them, look at the log and the variables.
class ScriptBench
{
public:
    // Runs `lines` as one script from the first to the last, as the launcher would.
    void run(const QStringList &lines)
    {
        state.runlist = lines;
        state.runidx[0] = 0;
        state.runidx[1] = static_cast<qint16>(lines.size() - 1);
        loop.RunLines(state.runidx[0], state.runidx[1]);
    }

    // Runs `lines` so that the variables are still there afterwards: the last line is never reached.
    void runKeepingVariables(const QStringList &lines)
    {
        run(lines + QStringList{QStringLiteral("input.text \"\"")});
    }

    QStringList events() const { return platform.log.lines(); }

    // The events without the pause before each line and the input box at the end.
    QStringList eventsOf(const QString &line)
    {
        platform.log.clear();
        runKeepingVariables({line});
        QStringList lines = platform.log.lines();
        lines.removeFirst();
        lines.resize(lines.size() - 2);
        return lines;
    }

    QString variable(const QString &name) const { return state.vardict.GetVar(name); }

    RecordingPlatform platform;
    RecordingWaiter waiter{platform.log};
    RecordingLauncher launcher{platform.log};
    RecordingHttpClient http{platform.log};
    RecordingStorePage storePage{platform.log};
    RunState state{.runlist = {},
        .runidx = {},
        .runctx = {QString(), QStringLiteral("bao")},
        .vardict = {},
        .currentKeyword = {},
        .droppedPath = {}};
    TextFiles files{platform.paths(), platform.textCodec()};
    ArgumentReader reader{{state, launcher, platform.clipboard(), platform.pointer(), platform.shell(),
        platform.paths(), files}};
    RunLoop loop{state, reader, waiter, launcher};

    MouseClicks clicks{platform.pointer(), waiter};
    MouseCommands mouse{reader, {platform.pointer(), clicks, waiter, state.vardict, launcher}};
    KeyboardCommands keyboard{reader, platform.keyboard(), platform.clipboard(), waiter};
    WindowCommands window{reader, platform.windows(), state.vardict};
    RecordingNotices notices{platform.log};
    OsCommands os{reader,
        {state, platform.paths(), platform.screen(), platform.pointer(), clicks, platform.clipboard(),
            platform.session(), platform.windows(), launcher, notices}};
    FileCommands file{reader,
        {state, platform.paths(), platform.textCodec(), files, platform.shell(), http, platform.javaScript(),
            storePage}};
    FileUpload upload{http, platform.paths(), platform.textCodec()};
    NetCommands net{
        reader, {http, upload, platform.textCodec(), platform.shell(), platform.paths(), state.vardict}};
    WebboxCommands webbox{reader, platform.shell(), platform.paths()};
    TextCommands text{reader, state.vardict};
    SetCommand set{reader, state.vardict};
    TimeCommands time{reader, waiter};
    PrintCommands print{reader, platform.shell(), platform.paths()};
    InputCommands input{reader, launcher, state.vardict};

    ScriptBench()
    {
        loop.addNamespace(QStringLiteral("mouse"), mouse);
        loop.addNamespace(QStringLiteral("keyboard"), keyboard);
        loop.addNamespace(QStringLiteral("window"), window);
        loop.addNamespace(QStringLiteral("os"), os);
        loop.addNamespace(QStringLiteral("file"), file);
        loop.addNamespace(QStringLiteral("net"), net);
        loop.addNamespace(QStringLiteral("webbox"), webbox);
        loop.addNamespace(QStringLiteral("text"), text);
        loop.addNamespace(QStringLiteral("set"), set);
        loop.addNamespace(QStringLiteral("time"), time);
        loop.addNamespace(QStringLiteral("print"), print);
        loop.addNamespace(QStringLiteral("input"), input);
        loop.addNamespace(QStringLiteral("me"), input);
    }
};

} // namespace plum::recording
