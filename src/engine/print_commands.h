#pragma once

#include "engine/command_table.h"

namespace plum {

class Paths;
class Shell;

// The namespace `print`: hands a page to the browser helper.
class PrintCommands final : public TableHandler<PrintCommands>
{
public:
    PrintCommands(Shell &shell, Paths &paths)
        : m_shell(shell)
        , m_paths(paths)
    {
    }

    static std::span<const Row> table();

private:
    void html(const CommandCall &call);

    Shell &m_shell;
    Paths &m_paths;
};

} // namespace plum
