#include "commands/webbox_commands.h"

#include "commands/fields.h"
#include "engine/editions/reason.h"
#include "engine/helper_programs.h"
#include "engine/script_folders.h"
#include "platform/shell.h"

namespace plum {

std::span<const WebboxCommands::Row> WebboxCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static constexpr std::array rows{
        Row{{u"url", {{{u"address", Url}, Field{u"title", Text}.optional()}},
                u"Shows an address in the browser helper.", Touches::Desktop, Editions::Both, {{Contact, 0}}},
            &WebboxCommands::url},
        Row{{u"html", {{{u"page", Text}, Field{u"title", Text}.optional()}},
                u"Shows a piece of HTML in the browser helper.", Touches::Desktop, Editions::Both,
                {{Contact, 0, ObjectForm::Page}}},
            &WebboxCommands::html},
    };
    return rows;
}

void WebboxCommands::url(const CommandCall &call)
{
    show(browserUrlMarker, call);
}

void WebboxCommands::html(const CommandCall &call)
{
    show(browserHtmlMarker, call);
}

void WebboxCommands::show(QLatin1StringView marker, const CommandCall &call)
{
    const QString content = writtenField(call, 0);
    const QString title = writtenField(call, 1);
    const QString program = m_folders.browserHelper();
    // The fields are joined as they are; a separator inside the first one is the script's own affair.
    const QString fields = marker + browserFieldSeparator + content + browserFieldSeparator + title;
    if (!m_shell.startHelper(program, fields, ShowState::Normal))
        call.fail(Reason::tr("the browser helper does not start: %1").arg(program));
}

} // namespace plum
