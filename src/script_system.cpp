#include "script_system.h"

#include "commands/file_commands.h"
#include "commands/keyboard_commands.h"
#include "commands/mouse_clicks.h"
#include "commands/mouse_commands.h"
#include "commands/net_commands.h"
#include "commands/notices.h"
#include "commands/os_commands.h"
#include "commands/point_actions.h"
#include "commands/waitable_timer.h"
#include "commands/webbox_commands.h"
#include "commands/window_commands.h"
#include "engine/edition2/runner.h"
#include "guard/guard.h"
#include "guard/guarded_platform.h"
#include "guard/guarded_starts.h"
#include "http/file_upload.h"
#include "http/loaded_http_client.h"
#include "library/app_folders.h"
#include "platform/platform.h"
#include "platform/stop_signal.h"
#include "programs/program_runner.h"
#include "search/screen_search.h"
#include "stopping/gated_platform.h"
#include "stopping/stoppable_http_client.h"
#include "stopping/stoppable_platform.h"
#include "values/calc_commands.h"
#include "values/json_commands.h"
#include "waits/patience.h"
#include "waits/wait_commands.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>

#include <optional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The local time to the second. Asking for the time zone costs a look at the disk, so it is done once a
// second and not at every pause.
clsWaitableTimer::Clock clockOfSeconds()
{
    return [second = qint64(0), time = QDateTime()]() mutable {
        if (const qint64 now = QDateTime::currentSecsSinceEpoch(); now != second) {
            second = now;
            time = QDateTime::fromSecsSinceEpoch(now);
        }
        return time;
    };
}

Patience::Clock clockOfMilliseconds()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

} // namespace

struct ScriptSystem::Parts
{
    explicit Parts(const Needs &needs)
        : platform(on(needs))
        , folders(platform.paths())
        , shell(with(needs))
        , ownWaiter(platform.timers(), needs.executableName, clockOfSeconds())
        , waiter(needs.waiter ? *needs.waiter : ownWaiter)
        , ownPrograms(waiter)
        , programs(starting(needs))
        , patience(waiter, needs.clock ? needs.clock : clockOfMilliseconds())
        , http(through(needs))
        , notices(needs.notices ? *needs.notices : ownNotices)
        , upload(http, platform.paths(), platform.textCodec())
        , clicks(platform.pointer(), waiter)
        , actions({platform.pointer(), clicks, platform.clipboard(), needs.launcher})
        , search(
              {platform.screen(), needs.launcher, platform.paths(), needs.stop, needs.searches, needs.sights})
        , engine({platform.clipboard(), platform.pointer(), shell, platform.paths(), folders,
              platform.textCodec(), needs.launcher, waiter})
    {
        if (needs.refused)
            guard = &ownGuard.emplace(
                Guard::Needs{needs.platform, engine.state(), needs.launcher, needs.refused});
    }

    Platform &on(const Needs &needs)
    {
        Platform *inner = &needs.platform;
        if (needs.stop)
            inner = &stoppable.emplace(*inner, *needs.stop);
        if (needs.gate)
            inner = &gated.emplace(*inner, *needs.gate);
        return needs.refused ? guardedPlatform.emplace(*inner, guard) : *inner;
    }

    Shell &with(const Needs &needs)
    {
        return needs.refused ? guardedShell.emplace(needs.shell, guard, folders) : needs.shell;
    }

    ProgramRunner &starting(const Needs &needs)
    {
        ProgramRunner &programsOfSystem = needs.programs ? *needs.programs : ownPrograms;
        return needs.refused ? guardedPrograms.emplace(programsOfSystem, guard) : programsOfSystem;
    }

    HttpClient &through(const Needs &needs)
    {
        HttpClient &ofSystem = needs.http ? *needs.http : ownHttp;
        HttpClient &client = needs.stop ? stoppableHttp.emplace(ofSystem, *needs.stop) : ofSystem;
        return needs.refused ? guardedHttp.emplace(client, guard) : client;
    }

    std::optional<StoppablePlatform> stoppable;
    std::optional<StoppableHttpClient> stoppableHttp;
    std::optional<GatedPlatform> gated;

    // The guard looks at the run, so it comes last; what it guards is there before it.
    Guard *guard = nullptr;
    std::optional<GuardedPlatform> guardedPlatform;
    std::optional<GuardedShell> guardedShell;
    std::optional<GuardedProgramRunner> guardedPrograms;
    std::optional<GuardedHttpClient> guardedHttp;
    std::optional<Guard> ownGuard;

    Platform &platform;
    AppFolders folders;
    Shell &shell;
    clsWaitableTimer ownWaiter;
    LoadedHttpClient ownHttp;
    StandardErrorNotices ownNotices;
    Waiter &waiter;
    ProcessRunner ownPrograms;
    ProgramRunner &programs;
    Patience patience;
    HttpClient &http;
    Notices &notices;
    FileUpload upload;
    MouseClicks clicks;
    PointActions actions;
    ScreenSearch search;
    ScriptEngine engine;
    std::optional<edition2::Runner> runner;
};

ScriptSystem::ScriptSystem(const Needs &needs)
    : m(std::make_unique<Parts>(needs))
{
    Platform &on = m->platform;
    ScriptEngine &to = m->engine;
    to.add(u"mouse"_s,
        std::make_unique<MouseCommands>(
            MouseCommands::Needs{on.pointer(), m->clicks, m->actions, m->waiter}));
    to.add(u"keyboard"_s, std::make_unique<KeyboardCommands>(on.keyboard(), on.clipboard(), m->waiter));
    to.add(u"file"_s,
        std::make_unique<FileCommands>(FileCommands::Needs{to.state(), on.paths(), m->folders, on.textCodec(),
            to.files(), m->shell, m->http, on.javaScript(), needs.storePage}));
    to.add(u"net"_s,
        std::make_unique<NetCommands>(
            NetCommands::Needs{m->http, m->upload, on.textCodec(), m->shell, m->folders}));
    to.add(u"webbox"_s, std::make_unique<WebboxCommands>(m->shell, m->folders));
    to.add(u"window"_s, std::make_unique<WindowCommands>(on.windows()));
    to.add(u"os"_s,
        std::make_unique<OsCommands>(OsCommands::Needs{to.state(), on.paths(), m->folders, on.screen(),
            m->search, m->actions, m->programs, on.textCodec(), on.clipboard(), on.session(), on.windows(),
            needs.launcher, m->notices}));
    to.add(u"calc"_s, std::make_unique<CalcCommands>(to.reader()));
    to.add(u"json"_s, std::make_unique<JsonCommands>());
    to.add(u"wait"_s,
        std::make_unique<WaitCommands>(WaitCommands::Needs{
            to.state(), on.paths(), m->folders, on.screen(), m->search, on.windows(), m->patience}));

    connectRunner(needs);
}

void ScriptSystem::connectRunner(const Needs &needs)
{
    ScriptEngine &to = m->engine;
    m->runner.emplace(edition2::Runner::Needs{to.state(), to.reader(), m->waiter, needs.launcher, to.files(),
        [stop = needs.stop] {
            QCoreApplication::processEvents();
            if (stop)
                stop->check();
        },
        [&to] { return to.vocabulary(); }, [&to](const QString &name) { return &to.handler(name); },
        needs.stop});
    to.starts().setLaterEdition(*m->runner);
}

ScriptSystem::~ScriptSystem() = default;

void ScriptSystem::presetVariable(const QString &name, const QString &value)
{
    m->runner->presetVariable(name, value);
}

ScriptEngine &ScriptSystem::engine()
{
    return m->engine;
}

} // namespace plum
