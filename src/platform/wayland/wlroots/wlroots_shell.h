#pragma once

#include "platform/linux/linux_shell.h"
#include "platform/wayland/sway/new_window_state.h"

#include <QObject>

namespace plum {

// A Linux shell that asks sway for the windows of what it started; elsewhere they come as their programs want
// them.
class WlrootsShell final : public LinuxShell
{
public:
    using LinuxShell::LinuxShell;

protected:
    void giveToNewWindow(pid_t session, ShowState state) override
    {
        new NewWindowState(session, state, &m_watches);
    }

private:
    QObject m_watches; // parent of what waits for new windows
};

} // namespace plum
