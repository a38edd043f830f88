#pragma once

#include "engine/command_table.h"

namespace plum {

class ScriptFolders;
class Shell;

// The namespace `print`: hands a page to the browser helper.
class PrintCommands final : public TableHandler<PrintCommands>
{
public:
    PrintCommands(Shell &shell, const ScriptFolders &folders)
        : m_shell(shell)
        , m_folders(folders)
    {
    }

    static std::span<const Row> table();

private:
    void html(const CommandCall &call);

    Shell &m_shell;
    const ScriptFolders &m_folders;
};

} // namespace plum
