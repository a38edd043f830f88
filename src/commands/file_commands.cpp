#include "commands/file_commands.h"

#include "commands/fields.h"
#include "commands/file_functions.h"
#include "commands/javascript_call.h"
#include "commands/path_resolution.h"
#include "commands/store_page.h"
#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/text_files.h"
#include "engine/text_functions.h"
#include "engine/variable_store.h"
#include "http/http_text.h"
#include "platform/paths.h"
#include "platform/shell.h"
#include "platform/text_codec.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct ShowMode
{
    QStringView word;
    ShowState state;
};

constexpr std::array showModes{
    ShowMode{u"", ShowState::Normal},
    ShowMode{u"hide", ShowState::Hidden},
    ShowMode{u"min", ShowState::Minimised},
    ShowMode{u"max", ShowState::Maximised},
};

std::optional<ShowState> showStateOf(const QString &word)
{
    const auto mode = std::ranges::find(showModes, QStringView(word), &ShowMode::word);
    return mode == showModes.end() ? std::nullopt : std::optional(mode->state);
}

constexpr std::array showWords{
    CommandInfo{u"hide", {}, u"Hidden."},
    CommandInfo{u"min", {}, u"Minimised."},
    CommandInfo{u"max", {}, u"Maximised."},
};
constexpr std::array outputWords{CommandInfo{u"html", {}, u"The store window shows its page."}};
constexpr std::array readWords{
    CommandInfo{u"r", {}, u"The lines in reverse order."},
    CommandInfo{u"all", {}, u"The text as it is, line ends and all.", Touches::Nothing, Editions::Two},
};
constexpr std::array saveWords{CommandInfo{u"append", {}, u"Adds to the end of the file."}};

// The browser is this much larger than the page that a script asks for, in pixels each way.
constexpr double browserMargin = 25;

int browserLength(const QString &size, int field)
{
    return toInt32(toDouble(Piece(size, u":"_s, field)) + browserMargin);
}

} // namespace

std::span<const FileCommands::Row> FileCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static constexpr std::array rows{
        Row{{u"open",
                {{{u"path", Path}, Field{u"parameters", Text}.optional(),
                    Field{u"show", Choice, u"normal"}.oneOf(showWords)}},
                u"Starts a program or opens a document, folder or address; show is empty, hide, min or max.",
                Touches::Desktop, Editions::Both, {{Run, 0}, {Contact, 0}}},
            &FileCommands::open},
        Row{{u"call",
                {{{u"path", Path}, Field{u"parameters", Text}.optional(),
                    Field{u"output", Choice}.oneOf(outputWords).optional(), Field{u"size", Text}.optional()}},
                u"Starts a program hidden; with output html its page appears in the store window, sized "
                u"w:h.",
                Touches::Desktop, Editions::Both, {{Run, 0}, {Contact, 0}}},
            &FileCommands::callProgram},
        Row{{u"call_js",
                {{{u"script", Path}, {u"function", Text}, Field{u"arguments", Text}.optional(),
                    Field{u"variable", Variable}.optional()}},
                u"Calls a function of a JavaScript file or address and stores its value.", Touches::Nothing,
                Editions::Both, {{Evaluate}, {ReadFile, 0}, {Contact, 0}}},
            &FileCommands::callJavaScript},
        Row{{u"read",
                {{{u"path", Path}, Field{u"mode", Choice, u"joined"}.oneOf(readWords).orNumber(),
                    {u"variable", Variable}}},
                u"Stores a text file: its lines joined, with mode r in reverse order, or the line of a "
                u"number; in edition 2 with mode all as it is.",
                Touches::Nothing, Editions::Both, {{ReadFile, 0}}},
            &FileCommands::read},
        Row{{u"save",
                {{{u"path", Path}, {u"variable", Variable},
                    Field{u"mode", Choice}.oneOf(saveWords).optional()}},
                u"Appends a variable's value as a line, with mode append. Without a mode edition 1 writes "
                u"nothing and edition 2 replaces the file.",
                Touches::Nothing, Editions::Both, {{WriteFile, 0, ObjectForm::AsWritten}}},
            &FileCommands::save},
        Row{{u"write",
                {{{u"path", Path}, {u"text", Text}, Field{u"mode", Choice}.oneOf(saveWords).optional()}},
                u"Writes a text into a file as it is, in place of what is there or, with mode append, behind "
                u"it.",
                Touches::Nothing, Editions::Two, {{WriteFile, 0}}},
            &FileCommands::write},
        Row{{u"exists", {{{u"path", Path}, {u"variable", Variable}}},
                u"Stores 1 where there is such a file or folder, else 0.", Touches::Nothing, Editions::Two,
                {{ReadFile, 0}}},
            &FileCommands::exists},
        Row{{u"list", {{{u"folder", Path}, {u"pattern", Text, u"*"}, {u"variable", Variable}}},
                u"Stores the names of a folder's files that fit a pattern such as *.txt, one a line, by "
                u"name.",
                Touches::Nothing, Editions::Two, {{ReadFile, 0}}},
            &FileCommands::list},
        Row{{u"move", {{{u"from", Path}, {u"to", Path}}}, u"Moves or renames a file; it replaces none.",
                Touches::Nothing, Editions::Two, {{ReadFile, 0}, {WriteFile, 0}, {WriteFile, 1}}},
            &FileCommands::move},
    };
    return rows;
}

QString FileCommands::resolved(const QString &path) const
{
    return ResolvePath(path, m_use.state, m_use.folders);
}

void FileCommands::open(const CommandCall &call)
{
    const QString written = fieldOrEmpty(call, 0);
    const QString path = resolved(written);
    const QString parameters = fieldOrEmpty(call, 1);
    const std::optional<ShowState> state = showStateOf(fieldOrEmpty(call, 2));
    if (!path.isEmpty() && state && !m_use.shell.open(path, parameters, *state))
        call.fail(Reason::tr("%1 cannot be opened").arg(written));
}

void FileCommands::callProgram(const CommandCall &call)
{
    const QString written = fieldOrEmpty(call, 0);
    const QString path = resolved(written);
    const QString parameters = fieldOrEmpty(call, 1);
    if (fieldOrEmpty(call, 2) == "html"_L1)
        prepareBrowser(fieldOrEmpty(call, 3));
    if (!m_use.shell.open(path, parameters, ShowState::Hidden))
        call.fail(Reason::tr("%1 cannot be started").arg(written));
    m_use.storePage.layOut();
    m_use.storePage.showLoadingPicture();
}

void FileCommands::prepareBrowser(const QString &size)
{
    if (!size.isEmpty()) {
        resumeNext([&] { m_use.storePage.setBrowserWidth(browserLength(size, 0)); });
        resumeNext([&] { m_use.storePage.setBrowserHeight(browserLength(size, 1)); });
    }
    m_use.storePage.navigateToBlank();
}

void FileCommands::callJavaScript(const CommandCall &call)
{
    const QString source = fieldOrEmpty(call, 0);
    const QString function = fieldOrEmpty(call, 1);
    const QString arguments = fieldOrEmpty(call, 2);
    const QString variable = fieldOrEmpty(call, 3);
    QString script;
    if (source.startsWith("http"_L1)) {
        const FetchedText fetched = fetchText(m_use.http, m_use.codec, source);
        script = fetched.text;
        if (!fetched.problem.isEmpty())
            call.fail(fetched.problem);
    } else {
        script = m_use.files.ReadAllText(resolved(source), ReadAllMode::Joined);
        requireFile(call, source);
    }
    const JavaScript::Result result = callJs(m_use.javaScript, script, function, arguments);
    if (!result.ok)
        call.fail(result.value);
    if (variable != "html"_L1 && (call.edition() == Edition::One || !variable.isEmpty()))
        call.setVariable(variable, result.ok ? result.value : QString());
}

void FileCommands::read(const CommandCall &call)
{
    const QString written = fieldOrEmpty(call, 0);
    const QString path = resolved(written);
    const QString mode = fieldOrEmpty(call, 1);
    requireFile(call, written);
    QString text;
    if (mode.isEmpty())
        text = m_use.files.ReadAllText(path, ReadAllMode::Joined);
    else if (mode == "all"_L1 && call.edition() == Edition::Two)
        text = m_use.codec.fromSystem(m_use.files.bytes(path).value_or(QByteArray()));
    else if (mode == "r"_L1)
        text = m_use.files.ReadAllText(path, ReadAllMode::ReversedLines);
    else
        resumeNext([&] { text = m_use.files.ReadLine(path, toInt32(mode)); });
    call.setVariable(fieldOrEmpty(call, 2), text);
}

// Edition 1 reads what is not there as empty.
void FileCommands::requireFile(const CommandCall &call, const QString &written) const
{
    if (call.edition() == Edition::Two && !m_use.files.isReadable(resolved(written)))
        call.fail(Reason::tr("%1 cannot be read").arg(written));
}

void FileCommands::save(const CommandCall &call)
{
    const QString path = fieldOrEmpty(call, 0);
    const QString name = fieldOrEmpty(call, 1);
    QString mode = fieldOrEmpty(call, 2);
    if (call.edition() == Edition::Two && !call.variables().contains(name)) {
        call.fail(Reason::tr("%1 was never set").arg(name));
        return;
    }
    // Kept: the empty mode is handed on as a word that no write knows, so nothing is written.
    if (call.edition() == Edition::One && mode.isEmpty())
        mode = u"覆盖"_s;
    if (!WriteText(path, call.variables().GetVar(name), mode, m_use.paths, m_use.codec))
        call.fail(Reason::tr("%1 cannot be written").arg(path));
}

void FileCommands::write(const CommandCall &call)
{
    const QString path = resolved(call.arg(0));
    if (!writeExactly(path, call.arg(1), call.arg(2) == "append"_L1, m_use.paths, m_use.codec))
        call.fail(Reason::tr("%1 cannot be written").arg(call.arg(0)));
}

void FileCommands::exists(const CommandCall &call)
{
    const QString path = m_use.paths.toSystem(resolved(call.arg(0)));
    call.setVariable(call.arg(1), m_use.paths.mayRead(path) && QFileInfo::exists(path) ? u"1"_s : u"0"_s);
}

void FileCommands::list(const CommandCall &call)
{
    const QString path = resolved(call.arg(0));
    const QString pattern = call.arg(1);
    const QDir folder(m_use.paths.toSystem(path));
    if (path.isEmpty() || !m_use.paths.mayRead(folder.path()) || !folder.exists()) {
        call.fail(Reason::tr("there is no folder %1").arg(call.arg(0)));
        return;
    }
    const QStringList names
        = folder.entryList({pattern.isEmpty() ? u"*"_s : pattern}, QDir::Files, QDir::Name);
    call.setVariable(call.arg(2), names.join(u"\r\n"_s));
}

void FileCommands::move(const CommandCall &call)
{
    const QString from = m_use.paths.toSystem(resolved(call.arg(0)));
    const QString to = m_use.paths.toSystem(resolved(call.arg(1)));
    const bool isAllowed
        = m_use.paths.mayRead(from) && m_use.paths.mayWrite(from) && m_use.paths.mayWrite(to);
    if (!isAllowed || !QFileInfo(from).isFile())
        call.fail(Reason::tr("there is no file %1").arg(call.arg(0)));
    else if (QFileInfo::exists(to))
        call.fail(Reason::tr("%1 is there already").arg(call.arg(1)));
    else if (!QFile::rename(from, to))
        call.fail(Reason::tr("%1 cannot be moved to %2").arg(call.arg(0), call.arg(1)));
}

} // namespace plum
