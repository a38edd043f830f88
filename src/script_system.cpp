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
#include "http/file_upload.h"
#include "http/loaded_http_client.h"
#include "platform/platform.h"
#include "search/screen_search.h"

#include <QDateTime>

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

} // namespace

struct ScriptSystem::Parts
{
    explicit Parts(const Needs &needs)
        : ownWaiter(needs.platform.timers(), needs.executableName, clockOfSeconds())
        , waiter(needs.waiter ? *needs.waiter : ownWaiter)
        , http(needs.http ? *needs.http : ownHttp)
        , notices(needs.notices ? *needs.notices : ownNotices)
        , upload(http, needs.platform.paths(), needs.platform.textCodec())
        , clicks(needs.platform.pointer(), waiter)
        , actions({needs.platform.pointer(), clicks, needs.platform.clipboard(), needs.launcher})
        , search({needs.platform.screen(), needs.launcher, needs.platform.paths()})
        , engine({needs.platform.clipboard(), needs.platform.pointer(), needs.shell, needs.platform.paths(),
              needs.platform.textCodec(), needs.launcher, waiter})
    {
    }

    clsWaitableTimer ownWaiter;
    LoadedHttpClient ownHttp;
    StandardErrorNotices ownNotices;
    Waiter &waiter;
    HttpClient &http;
    Notices &notices;
    FileUpload upload;
    MouseClicks clicks;
    PointActions actions;
    ScreenSearch search;
    ScriptEngine engine;
};

ScriptSystem::ScriptSystem(const Needs &needs)
    : m(std::make_unique<Parts>(needs))
{
    Platform &on = needs.platform;
    ScriptEngine &to = m->engine;
    to.add(u"mouse"_s,
        std::make_unique<MouseCommands>(
            MouseCommands::Needs{on.pointer(), m->clicks, m->actions, m->waiter}));
    to.add(u"keyboard"_s, std::make_unique<KeyboardCommands>(on.keyboard(), on.clipboard(), m->waiter));
    to.add(u"file"_s,
        std::make_unique<FileCommands>(FileCommands::Needs{to.state(), on.paths(), on.textCodec(), to.files(),
            needs.shell, m->http, on.javaScript(), needs.storePage}));
    to.add(u"net"_s,
        std::make_unique<NetCommands>(
            NetCommands::Needs{m->http, m->upload, on.textCodec(), needs.shell, on.paths()}));
    to.add(u"webbox"_s, std::make_unique<WebboxCommands>(needs.shell, on.paths()));
    to.add(u"window"_s, std::make_unique<WindowCommands>(on.windows()));
    to.add(u"os"_s,
        std::make_unique<OsCommands>(OsCommands::Needs{to.state(), on.paths(), on.screen(), m->search,
            m->actions, on.clipboard(), on.session(), on.windows(), needs.launcher, m->notices}));
}

ScriptSystem::~ScriptSystem() = default;

ScriptEngine &ScriptSystem::engine()
{
    return m->engine;
}

} // namespace plum
