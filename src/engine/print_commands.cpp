#include "engine/print_commands.h"

#include "engine/editions/reason.h"
#include "engine/helper_programs.h"
#include "engine/script_folders.h"
#include "platform/shell.h"

namespace plum {

std::span<const PrintCommands::Row> PrintCommands::table()
{
    static constexpr std::array rows{
        Row{{u"html", {{{u"page", FieldKind::Text}, Field{u"title", FieldKind::Text}.optional()}},
                u"Shows a page in the browser helper; the script goes on at once.", Touches::Desktop,
                Editions::Both, {{Effect::Contact, 0, ObjectForm::Page}}},
            &PrintCommands::html},
    };
    return rows;
}

void PrintCommands::html(const CommandCall &call)
{
    const QString page = call.arg(0);
    const QString title = call.arg(1);
    const QString program = m_folders.browserHelper();
    if (!m_shell.startHelper(program, page + browserFieldSeparator + title, ShowState::Normal))
        call.fail(Reason::tr("the browser helper does not start: %1").arg(program));
}

} // namespace plum
