#include "store/answered_shell.h"

#include "store/clipboard_channel.h"

namespace plum {

bool AnsweredShell::open(const QString &target, const QString &parameters, ShowState state)
{
    return m_shell.open(target, parameters, state);
}

bool AnsweredShell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    const bool isStarted = m_shell.startHelper(program, commandLine, state);
    if (isStarted)
        m_channel.setEnabled(true);
    return isStarted;
}

QString AnsweredShell::desktopFolder()
{
    return m_shell.desktopFolder();
}

QString AnsweredShell::shortcutTarget(const QString &path)
{
    return m_shell.shortcutTarget(path);
}

} // namespace plum
