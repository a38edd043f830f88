#include "platform/wayland/kwin/kwin_shell.h"

#include "platform/wayland/kwin/kwin_windows.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <unistd.h>

namespace plum {

namespace {

constexpr std::chrono::milliseconds lookAgain{50};
constexpr std::chrono::seconds longestWait{15};

// False while there is no window of that session.
bool giveState(KWinWindows &windows, pid_t session, ShowState state)
{
    const std::vector<KWinWindow> all = windows.all();
    const auto found = std::ranges::find_if(
        all, [&](const KWinWindow &window) { return getsid(window.process) == session; });
    if (found == all.end())
        return false;
    if (state == ShowState::Hidden)
        windows.hide(found->handle);
    else if (state == ShowState::Minimised)
        windows.minimise(found->handle);
    else if (state == ShowState::Maximised)
        windows.maximise(found->handle);
    return true;
}

} // namespace

void KWinShell::giveToNewWindow(pid_t session, ShowState state)
{
    auto *look = new QTimer(&m_watches);
    const QDeadlineTimer deadline(longestWait);
    QObject::connect(look, &QTimer::timeout, look, [this, look, session, state, deadline] {
        if (giveState(m_windows(), session, state) || deadline.hasExpired())
            look->deleteLater();
    });
    look->start(lookAgain);
}

} // namespace plum
