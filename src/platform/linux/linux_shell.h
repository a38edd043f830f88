#pragma once

#include "platform/shell.h"

#include <sys/types.h>

namespace plum {

class Paths;
struct DetachedStart;

// Starts programs by themselves, and everything else through the desktop's own opener, xdg-open.
class LinuxShell : public Shell
{
public:
    explicit LinuxShell(const Paths &paths)
        : m_paths(paths)
    {
    }

    bool open(const QString &target, const QString &parameters, ShowState state) final;
    bool startHelper(const QString &program, const QString &commandLine, ShowState state) final;
    QString desktopFolder() final;
    QString shortcutTarget(const QString &path) final;

protected:
    // Gives `state`, another one than Normal, to the first window of the program that leads `session`. Does
    // not wait for it.
    virtual void giveToNewWindow(pid_t session, ShowState state) = 0;

private:
    DetachedStart start(const QString &program, const QStringList &arguments, ShowState state);
    bool handToDesktop(const QString &target, ShowState state);

    const Paths &m_paths;
};

} // namespace plum
