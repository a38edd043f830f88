#pragma once

#include "platform/shell.h"

#include <QObject>

namespace plum {

class Paths;
struct DetachedStart;

// Starts programs by themselves, and everything else through the desktop's own opener, xdg-open.
class X11Shell final : public Shell
{
public:
    explicit X11Shell(const Paths &paths)
        : m_paths(paths)
    {
    }

    bool open(const QString &target, const QString &parameters, ShowState state) override;
    bool startHelper(const QString &program, const QString &commandLine, ShowState state) override;
    QString desktopFolder() override;
    QString shortcutTarget(const QString &path) override;

    // Gives programs that were started in another state than the normal one a moment to show their window,
    // since nobody else puts it into that state.
    void finishStarts();

private:
    DetachedStart start(const QString &program, const QStringList &arguments, ShowState state);
    bool handToDesktop(const QString &target, ShowState state);

    const Paths &m_paths;
    QObject m_watches; // parent of what waits for new windows
};

} // namespace plum
