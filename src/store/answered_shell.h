#pragma once

#include "platform/shell.h"

namespace plum {

class ClipboardChannel;

// The shell that scripts use. A helper program may answer with a page through the clipboard, so a start of
// one switches the channel on again.
class AnsweredShell final : public Shell
{
public:
    AnsweredShell(Shell &shell, ClipboardChannel &channel)
        : m_shell(shell)
        , m_channel(channel)
    {
    }

    bool open(const QString &target, const QString &parameters, ShowState state) override;
    bool startHelper(const QString &program, const QString &commandLine, ShowState state) override;
    QString desktopFolder() override;
    QString shortcutTarget(const QString &path) override;

private:
    Shell &m_shell;
    ClipboardChannel &m_channel;
};

} // namespace plum
