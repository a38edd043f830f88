#pragma once

#include "platform/linux/linux_shell.h"

#include <QObject>

namespace plum {

// A Linux shell that finds the windows of what it started by the hints of window managers.
class X11Shell final : public LinuxShell
{
public:
    using LinuxShell::LinuxShell;

    // Gives programs that were started in another state than the normal one a moment to show their window,
    // since nobody else puts it into that state.
    void finishStarts();

protected:
    void giveToNewWindow(pid_t session, ShowState state) override;

private:
    QObject m_watches; // parent of what waits for new windows
};

} // namespace plum
