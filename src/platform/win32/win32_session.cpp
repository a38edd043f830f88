#include "platform/win32/win32_session.h"

#include "platform/win32/hidden_window.h"
#include "platform/win32/started_process.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

using Outcome = Session::Outcome;

Outcome outcome(bool isDone)
{
    return isDone ? Outcome::Done : Outcome::Unavailable;
}

Outcome runShutdown(const QString &options)
{
    return outcome(startProcess(systemProgram(u"shutdown.exe"_s), options, SW_HIDE));
}

} // namespace

Outcome Win32Session::lockScreen()
{
    return outcome(LockWorkStation());
}

Outcome Win32Session::monitorOff()
{
    // Every window does with this message what the system does by default.
    constexpr LPARAM off = 2;
    return outcome(PostMessageW(m_window.handle(), WM_SYSCOMMAND, SC_MONITORPOWER, off));
}

// Today's program refuses a waiting time together with a log-off and ends at once; where the first command is
// taken, the second comes too late to matter.
Outcome Win32Session::logOff()
{
    const Outcome started = runShutdown(u"-f -l -t 0"_s);
    return started == Outcome::Done ? runShutdown(u"-f -l"_s) : started;
}

Outcome Win32Session::shutDown()
{
    return runShutdown(u"-f -s -t 0"_s);
}

Outcome Win32Session::restart()
{
    return runShutdown(u"-f -r -t 0"_s);
}

} // namespace plum
