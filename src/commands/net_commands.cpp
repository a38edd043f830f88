#include "commands/net_commands.h"

#include "commands/fields.h"
#include "engine/helper_programs.h"
#include "engine/script_folders.h"
#include "http/file_upload.h"
#include "http/http_text.h"
#include "platform/shell.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView defaultContentType("application/upload");

} // namespace

std::span<const NetCommands::Row> NetCommands::table()
{
    using enum FieldKind;
    static constexpr std::array rows{
        Row{{u"get", {{{u"url", Url}, {u"variable", Variable}}},
                u"Fetches a page as text; empty when it cannot be had."},
            &NetCommands::get},
        Row{{u"post", {}, u"Accepted, and does nothing.", Touches::Nothing, Editions::One},
            &NetCommands::post},
        Row{{u"upload",
                {{{u"url", Url}, {u"file", Path}, {u"field", Text},
                    {u"content type", Text, u"application/upload"}, Field{u"variable", Variable}.optional()}},
                u"Posts a file as a form and stores the answer, if a variable is given."},
            &NetCommands::upload},
        Row{{u"download",
                {{{u"url", Url}, {u"folder", Path, u"the download helper's own"},
                    {u"name", Text, u"the last part of the address"}, Field{u"label", Text}.optional()}},
                u"Hands a download over to the download helper; the script goes on at once."},
            &NetCommands::download},
    };
    return rows;
}

void NetCommands::get(const CommandCall &call)
{
    const FetchedText page = fetchText(m_use.http, m_use.codec, writtenField(call, 0));
    if (!page.problem.isEmpty())
        call.fail(page.problem);
    call.setVariable(writtenField(call, 1), page.text);
}

void NetCommands::post(const CommandCall &)
{
}

void NetCommands::upload(const CommandCall &call)
{
    const QString url = writtenField(call, 0);
    const QString path = writtenField(call, 1);
    const QString field = writtenField(call, 2);
    QString contentType = writtenField(call, 3);
    if (contentType.isEmpty())
        contentType = defaultContentType;
    const QString variable = writtenField(call, 4);
    const QString response = m_use.upload.UploadFile(url, path, contentType, field);
    if (const QString &problem = m_use.upload.problem(); !problem.isEmpty())
        call.fail(problem);
    if (!variable.isEmpty())
        call.setVariable(variable, response);
}

void NetCommands::download(const CommandCall &call)
{
    QString url = writtenField(call, 0);
    QString folder = writtenField(call, 1);
    QString name = writtenField(call, 2);
    const QString label = writtenField(call, 3);
    if (name.isEmpty())
        name = FileNameFromUrl(url);
    if (folder.isEmpty())
        folder = m_use.folders.downloads();
    const QString program = m_use.folders.downloadHelper();
    const QString fields = QStringList{url, folder, name, label}.join(downloadFieldSeparator);
    if (!m_use.shell.startHelper(program, fields, ShowState::Normal))
        call.fail(u"the download helper does not start: %1"_s.arg(program));
}

} // namespace plum
