#pragma once

#include "engine/command_table.h"

namespace plum {

class ScriptFolders;
class Shell;

// The namespace `webbox`: shows a page in the browser helper. A field that is not there is empty.
class WebboxCommands final : public TableHandler<WebboxCommands>
{
public:
    WebboxCommands(Shell &shell, const ScriptFolders &folders)
        : TableHandler(WordMatch::LowerCased)
        , m_shell(shell)
        , m_folders(folders)
    {
    }

    static std::span<const Row> table();

private:
    void url(const CommandCall &call);
    void html(const CommandCall &call);
    void show(QLatin1StringView marker, const CommandCall &call);

    Shell &m_shell;
    const ScriptFolders &m_folders;
};

} // namespace plum
