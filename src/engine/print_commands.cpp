#include "engine/print_commands.h"

#include "engine/helper_programs.h"
#include "platform/paths.h"
#include "platform/shell.h"

namespace plum {

std::span<const PrintCommands::Row> PrintCommands::table()
{
    static constexpr std::array rows{
        Row{{u"html", {{{u"page", FieldKind::Text}, {u"title", FieldKind::Text}}},
                u"Shows a page in the browser helper; the script goes on at once."},
            &PrintCommands::html},
    };
    return rows;
}

void PrintCommands::html(const CommandCall &call)
{
    const QString page = call.arg(0);
    const QString title = call.arg(1);
    // A missing helper goes unnoticed: the script has nothing it could do about it.
    m_shell.startHelper(
        m_paths.programFolder() + browserHelper, page + browserFieldSeparator + title, ShowState::Normal);
}

} // namespace plum
