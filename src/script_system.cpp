#include "script_system.h"

#include "platform/platform.h"

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

ScriptSystem::ScriptSystem(
    Platform &platform, Launcher &launcher, StorePage &storePage, const QString &executableName)
    : m_files(platform.paths(), platform.textCodec())
    , m_reader({m_state, launcher, platform.clipboard(), platform.pointer(), platform.shell(),
          platform.paths(), m_files})
    , m_waiter(platform.timers(), executableName, clockOfSeconds())
    , m_loop(m_state, m_reader, m_waiter, launcher)
    , m_starts(m_state, m_loop, m_files, platform.paths())
    , m_upload(m_http, platform.paths(), platform.textCodec())
    , m_clicks(platform.pointer(), m_waiter)
    , m_mouse(m_reader, {platform.pointer(), m_clicks, m_waiter, m_state.vardict, launcher})
    , m_keyboard(m_reader, platform.keyboard(), platform.clipboard(), m_waiter)
    , m_file(m_reader,
          {m_state, platform.paths(), platform.textCodec(), m_files, platform.shell(), m_http,
              platform.javaScript(), storePage})
    , m_net(m_reader,
          {m_http, m_upload, platform.textCodec(), platform.shell(), platform.paths(), m_state.vardict})
    , m_text(m_reader, m_state.vardict)
    , m_set(m_reader, m_state.vardict)
    , m_webbox(m_reader, platform.shell(), platform.paths())
    , m_time(m_reader, m_waiter)
    , m_window(m_reader, platform.windows(), m_state.vardict)
    , m_print(m_reader, platform.shell(), platform.paths())
    , m_os(m_reader,
          {m_state, platform.paths(), platform.screen(), platform.pointer(), m_clicks, platform.clipboard(),
              platform.session(), platform.windows(), launcher, m_notices})
    , m_input(m_reader, launcher, m_state.vardict)
{
    m_loop.addNamespace(u"mouse"_s, m_mouse);
    m_loop.addNamespace(u"keyboard"_s, m_keyboard);
    m_loop.addNamespace(u"file"_s, m_file);
    m_loop.addNamespace(u"net"_s, m_net);
    m_loop.addNamespace(u"text"_s, m_text);
    m_loop.addNamespace(u"set"_s, m_set);
    m_loop.addNamespace(u"webbox"_s, m_webbox);
    m_loop.addNamespace(u"time"_s, m_time);
    m_loop.addNamespace(u"window"_s, m_window);
    m_loop.addNamespace(u"print"_s, m_print);
    m_loop.addNamespace(u"os"_s, m_os);
    m_loop.addNamespace(u"input"_s, m_input);
    m_loop.addNamespace(u"me"_s, m_input);
}

} // namespace plum
