#include "script_system.h"

#include "platform/platform.h"

#include <QDateTime>

namespace plum {

using namespace Qt::StringLiterals;

ScriptSystem::ScriptSystem(Platform &platform, Launcher &launcher, const QString &executableName)
    : m_files(platform.paths(), platform.textCodec())
    , m_reader({m_state, launcher, platform.clipboard(), platform.pointer(), platform.shell(),
          platform.paths(), m_files})
    , m_waiter(platform.timers(), executableName, &QDateTime::currentDateTime)
    , m_loop(m_state, m_reader, m_waiter, launcher)
    , m_starts(m_state, m_loop, m_files, platform.paths())
    , m_clicks(platform.pointer(), m_waiter)
    , m_mouse(m_reader, {platform.pointer(), m_clicks, m_waiter, m_state.vardict, launcher})
    , m_keyboard(m_reader, platform.keyboard(), platform.clipboard(), m_waiter)
    , m_text(m_reader, m_state.vardict)
    , m_set(m_reader, m_state.vardict)
    , m_time(m_reader, m_waiter)
    , m_window(m_reader, platform.windows(), m_state.vardict)
    , m_print(m_reader, platform.shell(), platform.paths())
    , m_input(m_reader, launcher, m_state.vardict)
{
    m_loop.addNamespace(u"mouse"_s, m_mouse);
    m_loop.addNamespace(u"keyboard"_s, m_keyboard);
    m_loop.addNamespace(u"text"_s, m_text);
    m_loop.addNamespace(u"set"_s, m_set);
    m_loop.addNamespace(u"time"_s, m_time);
    m_loop.addNamespace(u"window"_s, m_window);
    m_loop.addNamespace(u"print"_s, m_print);
    m_loop.addNamespace(u"input"_s, m_input);
    m_loop.addNamespace(u"me"_s, m_input);
}

} // namespace plum
