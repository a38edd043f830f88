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
    Platform &platform, Shell &shell, Launcher &launcher, StorePage &storePage, const QString &executableName)
    : m_files(platform.paths(), platform.textCodec())
    , m_reader(
          {m_state, launcher, platform.clipboard(), platform.pointer(), shell, platform.paths(), m_files})
    , m_waiter(platform.timers(), executableName, clockOfSeconds())
    , m_loop(m_state, m_reader, m_waiter, launcher)
    , m_starts(m_state, m_loop, m_files, platform.paths())
    , m_upload(m_http, platform.paths(), platform.textCodec())
    , m_clicks(platform.pointer(), m_waiter)
    , m_mouse(m_reader, {platform.pointer(), m_clicks, m_waiter, m_state.vardict, launcher})
    , m_keyboard(m_reader, platform.keyboard(), platform.clipboard(), m_waiter)
    , m_file(m_reader,
          {m_state, platform.paths(), platform.textCodec(), m_files, shell, m_http, platform.javaScript(),
              storePage})
    , m_net(m_reader, {m_http, m_upload, platform.textCodec(), shell, platform.paths(), m_state.vardict})
    , m_text(m_reader, m_state.vardict)
    , m_set(m_reader, m_state.vardict)
    , m_webbox(m_reader, shell, platform.paths())
    , m_time(m_reader, m_waiter)
    , m_window(m_reader, platform.windows(), m_state.vardict)
    , m_print(m_reader, shell, platform.paths())
    , m_os(m_reader,
          {m_state, platform.paths(), platform.screen(), platform.pointer(), m_clicks, platform.clipboard(),
              platform.session(), platform.windows(), launcher, m_notices})
    , m_input(m_reader, launcher, m_state.vardict)
{
    m_namespaces = {{u"mouse"_s, &m_mouse}, {u"keyboard"_s, &m_keyboard}, {u"file"_s, &m_file},
        {u"net"_s, &m_net}, {u"text"_s, &m_text}, {u"set"_s, &m_set}, {u"webbox"_s, &m_webbox},
        {u"time"_s, &m_time}, {u"window"_s, &m_window}, {u"print"_s, &m_print}, {u"os"_s, &m_os},
        {u"input"_s, &m_input}, {u"me"_s, &m_input}};
    for (const auto &[name, handler] : m_namespaces)
        m_loop.addNamespace(name, *handler);
}

ScriptVocabulary ScriptSystem::vocabulary() const
{
    ScriptVocabulary vocabulary;
    for (const auto &[name, handler] : m_namespaces)
        vocabulary.add(name, handler->commands());
    return vocabulary;
}

} // namespace plum
