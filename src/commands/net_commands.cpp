#include "commands/net_commands.h"

#include "commands/fields.h"
#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/helper_programs.h"
#include "engine/script_folders.h"
#include "http/file_upload.h"
#include "http/http_client.h"
#include "http/http_text.h"
#include "platform/shell.h"

#include <QRegularExpression>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView defaultContentType("application/upload");

constexpr QStringView usualTime = u"30000"; // milliseconds

constexpr std::array methodWords{
    CommandInfo{u"get", {}, u"Asks for what is there."},
    CommandInfo{u"post", {}, u"Hands something over."},
    CommandInfo{u"put", {}, u"Puts something in the place of what is there."},
    CommandInfo{u"patch", {}, u"Changes a part of what is there."},
    CommandInfo{u"delete", {}, u"Deletes what is there."},
};

// What HTTP allows as the name of a method or a header.
bool isToken(QAnyStringView text)
{
    static const QRegularExpression token(u"^[A-Za-z0-9!#$%&'*+.^_`|~-]+$"_s);
    return token.match(text.toString()).hasMatch();
}

} // namespace

std::span<const NetCommands::Row> NetCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static constexpr std::array rows{
        Row{{u"get", {{{u"url", Url}, {u"variable", Variable}}},
                u"Fetches a page as text; empty when it cannot be had.", Touches::Nothing, Editions::Both,
                {{Contact, 0}}},
            &NetCommands::get},
        Row{{u"post", {}, u"Accepted, and does nothing.", Touches::Nothing, Editions::One},
            &NetCommands::post},
        Row{{u"upload",
                {{{u"url", Url}, {u"file", Path}, {u"field", Text},
                    {u"content type", Text, u"application/upload"}, Field{u"variable", Variable}.optional()}},
                u"Posts a file as a form and stores the answer, if a variable is given.", Touches::Nothing,
                Editions::Both, {{Contact, 0}, {ReadFile, 1, ObjectForm::AsWritten}}},
            &NetCommands::upload},
        Row{{u"download",
                {{{u"url", Url}, {u"folder", Path, u"the download helper's own"},
                    {u"name", Text, u"the last part of the address"}, Field{u"label", Text}.optional()}},
                u"Hands a download over to the download helper; the script goes on at once.",
                Touches::Nothing, Editions::Both, {{Contact, 0}, {WriteFile, 1, ObjectForm::Folder}}},
            &NetCommands::download},
        Row{{u"request",
                {{Field{u"method", Choice}.oneOf(methodWords), {u"url", Url},
                    Field{u"headers", Text}.optional(), Field{u"body", Text}.optional(),
                    Field{u"answer", Variable}.optional(), Field{u"status", Variable}.optional(),
                    {u"time", Milliseconds, usualTime}}},
                u"Sends a request, with headers as lines of Name: value, and stores the answer; without a "
                u"variable "
                u"for the status, one outside 200 to 299 is an error.",
                Touches::Nothing, Editions::Two, {{Contact, 1}}},
            &NetCommands::request},
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
        call.fail(Reason::tr("the download helper does not start: %1").arg(program));
}

void NetCommands::request(const CommandCall &call)
{
    const QString written = call.arg(6);
    HttpRequest request{.method = call.arg(0).toUpper().toLatin1(),
        .url = call.arg(1),
        .headers = {},
        .body = call.arg(3).toUtf8(),
        .milliseconds = toInt32(written.isEmpty() ? usualTime : QStringView(written))};
    if (!isToken(QLatin1StringView(request.method))) {
        call.fail(Reason::tr("\"%1\" is no method").arg(call.arg(0)));
        return;
    }
    bool hasType = false;
    for (const QString &line : call.arg(2).split(QRegularExpression(u"[\r\n]+"_s), Qt::SkipEmptyParts)) {
        const QString name = line.section(u':', 0, 0).trimmed();
        if (!line.contains(u':') || !isToken(name)) {
            call.fail(Reason::tr("\"%1\" is no header").arg(line));
            return;
        }
        hasType = hasType || name.compare("content-type"_L1, Qt::CaseInsensitive) == 0;
        request.headers.emplace_back(name.toLatin1(), line.section(u':', 1).trimmed().toUtf8());
    }
    if (!hasType && !request.body.isEmpty())
        request.headers.emplace_back("Content-Type", "text/plain; charset=utf-8");

    const HttpReply reply = m_use.http.request(request);
    const QString statusVariable = call.arg(5);
    if (reply.status == 0)
        call.fail(
            Reason::tr("nothing answers at %1 within %2 ms").arg(request.url).arg(request.milliseconds));
    else if (statusVariable.isEmpty() && (reply.status < 200 || reply.status > 299))
        call.fail(Reason::tr("%1 answers with status %2").arg(request.url).arg(reply.status));
    if (const QString answer = call.arg(4); !answer.isEmpty())
        call.setVariable(answer, responseText(reply, m_use.codec));
    if (!statusVariable.isEmpty())
        call.setVariable(statusVariable, QString::number(reply.status));
}

} // namespace plum
