#include "commands/file_commands.h"

#include "commands/fields.h"
#include "commands/file_functions.h"
#include "commands/javascript_call.h"
#include "commands/path_resolution.h"
#include "commands/store_page.h"
#include "engine/conversions.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/text_files.h"
#include "engine/text_functions.h"
#include "http/http_text.h"
#include "platform/shell.h"

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
    static constexpr std::array rows{
        Row{{u"open", {{{u"path", Path}, {u"parameters", Text}, {u"show", Choice, u"normal"}}},
                u"Starts a program or opens a document, folder or address; show is empty, hide, min or max."},
            &FileCommands::open},
        Row{{u"call", {{{u"path", Path}, {u"parameters", Text}, {u"output", Choice}, {u"size", Text}}},
                u"Starts a program hidden; with output html its page appears in the store window, sized "
                u"w:h."},
            &FileCommands::callProgram},
        Row{{u"call_js",
                {{{u"script", Path}, {u"function", Text}, {u"arguments", Text}, {u"variable", Variable}}},
                u"Calls a function of a JavaScript file or address and stores its value."},
            &FileCommands::callJavaScript},
        Row{{u"read", {{{u"path", Path}, {u"mode", Choice, u"joined"}, {u"variable", Variable}}},
                u"Stores a text file: its lines joined, with mode r in reverse order, or the line of a "
                u"number."},
            &FileCommands::read},
        Row{{u"save", {{{u"path", Path}, {u"variable", Variable}, {u"mode", Choice}}},
                u"Appends a variable's value as a line, with mode append; any other mode writes nothing."},
            &FileCommands::save},
    };
    return rows;
}

QString FileCommands::resolved(const QString &path) const
{
    return ResolvePath(path, m_use.state, m_use.paths);
}

void FileCommands::open(const CommandCall &call)
{
    const QString path = resolved(fieldOrEmpty(call, 0));
    const QString parameters = fieldOrEmpty(call, 1);
    const std::optional<ShowState> state = showStateOf(fieldOrEmpty(call, 2));
    if (!path.isEmpty() && state)
        m_use.shell.open(path, parameters, *state);
}

void FileCommands::callProgram(const CommandCall &call)
{
    const QString path = resolved(fieldOrEmpty(call, 0));
    const QString parameters = fieldOrEmpty(call, 1);
    if (fieldOrEmpty(call, 2) == "html"_L1)
        prepareBrowser(fieldOrEmpty(call, 3));
    m_use.shell.open(path, parameters, ShowState::Hidden);
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
    const QString script = source.startsWith("http"_L1)
        ? HttpGetText(m_use.http, m_use.codec, source)
        : m_use.files.ReadAllText(resolved(source), ReadAllMode::Joined);
    const QString result = EvalJs(m_use.javaScript, script, function, arguments);
    if (variable != "html"_L1)
        m_use.state.vardict.SetVar(variable, result);
}

void FileCommands::read(const CommandCall &call)
{
    const QString path = resolved(fieldOrEmpty(call, 0));
    const QString mode = fieldOrEmpty(call, 1);
    QString text;
    if (mode.isEmpty())
        text = m_use.files.ReadAllText(path, ReadAllMode::Joined);
    else if (mode == "r"_L1)
        text = m_use.files.ReadAllText(path, ReadAllMode::ReversedLines);
    else
        resumeNext([&] { text = m_use.files.ReadLine(path, toInt32(mode)); });
    m_use.state.vardict.SetVar(fieldOrEmpty(call, 2), text);
}

void FileCommands::save(const CommandCall &call)
{
    const QString path = fieldOrEmpty(call, 0);
    const QString text = m_use.state.vardict.GetVar(fieldOrEmpty(call, 1));
    const QString mode = fieldOrEmpty(call, 2);
    // Kept: the empty mode is handed on as a word that no write knows, so nothing is written.
    WriteText(path, text, mode.isEmpty() ? u"覆盖"_s : mode, m_use.paths, m_use.codec);
}

} // namespace plum
