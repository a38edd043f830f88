#pragma once

#include "platform/linux/linux_shell.h"

#include <QObject>

#include <functional>

namespace plum {

class KWinWindows;

// A Linux shell that asks KWin for the windows of what it started.
class KWinShell final : public LinuxShell
{
public:
    // `windows` gives the windows when they are needed.
    KWinShell(const Paths &paths, std::function<KWinWindows &()> windows)
        : LinuxShell(paths)
        , m_windows(std::move(windows))
    {
    }

protected:
    void giveToNewWindow(pid_t session, ShowState state) override;

private:
    std::function<KWinWindows &()> m_windows;
    QObject m_watches; // parent of what waits for new windows
};

} // namespace plum
