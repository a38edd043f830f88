#include "platform/x11/x11_shell.h"

#include "platform/x11/windows/new_window_watch.h"

#include <QDeadlineTimer>

#include <chrono>

namespace plum {

namespace {

constexpr std::chrono::seconds endPatience{1};

} // namespace

void X11Shell::giveToNewWindow(pid_t session, ShowState state)
{
    new NewWindowWatch(session, state, &m_watches);
}

void X11Shell::finishStarts()
{
    const QDeadlineTimer deadline(endPatience);
    for (NewWindowWatch *watch :
        m_watches.findChildren<NewWindowWatch *>(QString(), Qt::FindDirectChildrenOnly))
        watch->finishBefore(deadline);
}

} // namespace plum
