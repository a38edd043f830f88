#include "commands/os_commands.h"

#include "commands/notices.h"
#include "commands/path_resolution.h"
#include "commands/point_actions.h"
#include "commands/screen_fields.h"
#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/launcher.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/text_functions.h"
#include "platform/clipboard.h"
#include "platform/desktop_windows.h"
#include "platform/paths.h"
#include "platform/text_codec.h"
#include "programs/program_runner.h"
#include "search/screen_search.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A coordinate of the found point, wrapped to 16 bits as all sums of coordinates are.
qint16 coordinate(qint64 found, qint32 areaStart, qint16 offset)
{
    return static_cast<qint16>(static_cast<quint16>(found + areaStart + offset));
}

constexpr qint64 longestRun = 60000; // milliseconds
constexpr int crashed = -1; // the status of a program that ended by no will of its own

// Where the machine has no such service, the program that stands for it could not be started.
void requireStarted(Session::Outcome outcome)
{
    if (outcome == Session::Outcome::Unavailable)
        throw RunTimeError(RunTimeError::FileNotFound, ErrorCause::MissingProgram, u"shutdown"_s);
}

} // namespace

std::span<const OsCommands::Row> OsCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static const QList<CommandInfo> actionWords = PointActions::words(PointActions::Search);
    static const std::array rows{
        Row{{u"find_pic",
                {{{u"picture", Path}, {u"region", Region, u"the main screen"}, {u"offset", Offset, u"0:0"},
                    Field{u"action", Choice, u"nothing"}.oneOfOrVariable(actionWords)}},
                u"Looks for a picture on the screen and acts at its top left corner: click, d_click, r_click "
                u"where the pointer is, move, get_xy, get_x, get_y, set_clipboard; any other word is the "
                u"variable that receives the point.",
                Touches::Desktop, Editions::Both, {{SeeScreen}, {ReadFile, 0}}},
            &OsCommands::findPicture},
        Row{{u"find_color",
                {{{u"colour", Colour}, {u"region", Region, u"the main screen"}, {u"offset", Offset, u"0:0"},
                    Field{u"action", Choice, u"nothing"}.oneOfOrVariable(actionWords)}},
                u"Looks for the first pixel of exactly one colour and acts there as find_pic does.",
                Touches::Desktop, Editions::Both, {{SeeScreen}}},
            &OsCommands::findColour},
        Row{{u"set_clipboard", {{{u"text", Text}}}, u"Puts a text on the clipboard in place of all else.",
                Touches::Desktop, Editions::Both, {{SetClipboard}}},
            &OsCommands::setClipboard},
        Row{{u"get_clipboard", {{{u"variable", Variable}}}, u"Stores the clipboard's text.", Touches::Desktop,
                Editions::Both, {{SeeClipboard}}},
            &OsCommands::getClipboard},
        Row{{u"tips", {{{u"text", Text}}}, u"Shows a tip; the script goes on when it is closed."},
            &OsCommands::showTip},
        Row{{u"lock_screen", {}, u"Locks the screen.", Touches::Desktop, Editions::Both, {{LockScreen}}},
            &OsCommands::lockScreen},
        Row{{u"off_monitor", {}, u"Switches the monitor off.", Touches::Desktop, Editions::Both,
                {{SwitchMonitorOff}}},
            &OsCommands::turnMonitorOff},
        Row{{u"log_off", {}, u"Ends the session without asking programs.", Touches::Desktop, Editions::Both,
                {{LogOff}}},
            &OsCommands::logOff},
        Row{{u"shut_down", {}, u"Switches the machine off without asking programs.", Touches::Desktop,
                Editions::Both, {{ShutDown}}},
            &OsCommands::shutDown},
        Row{{u"restart", {}, u"Restarts the machine without asking programs.", Touches::Desktop,
                Editions::Both, {{Restart}}},
            &OsCommands::restart},
        Row{{u"run",
                {{{u"program", Path}, Field{u"arguments", Text}.repeated(),
                    Field{u"output", Variable}.optional(), Field{u"status", Variable}.optional()}},
                u"Runs a program and waits for its end, a minute at most; stores what it wrote and its "
                u"status. "
                u"Without a variable for the status, one that is not 0 is an error.",
                Touches::Nothing, Editions::Two, {{Run, 0}}},
            &OsCommands::run},
        Row{{u"窗口最小化", {{{u"title", Text}}},
                u"Minimises the window with exactly this title, written without quotes.", Touches::Desktop,
                Editions::Both, {{ChangeWindows, 0, ObjectForm::AsWritten}}},
            &OsCommands::minimiseByTitle},
    };
    return rows;
}

OsCommands::SearchFields OsCommands::searchFields(const CommandCall &call) const
{
    const QString written = call.arg(0);
    const QString target = ResolvePath(written, m_use.state, m_use.folders);
    const QString region = call.arg(1);
    const QString offset = call.arg(2);
    return {written, target, region, offset, call.arg(3)};
}

void OsCommands::findPicture(const CommandCall &call)
{
    const SearchFields fields = searchFields(call);
    // A missing picture is all that is reported, even where the other fields make no sense.
    const bool exists = call.edition() == Edition::One ? m_use.search.requirePicture(fields.target)
                                                       : m_use.search.hasPicture(fields.target);
    if (!exists) {
        call.fail(Reason::tr("there is no picture %1").arg(fields.written));
        return;
    }
    searchAndAct(call, fields, Reason::tr("the picture %1 is not on the screen").arg(fields.written),
        [&](const ScreenArea &area) { return m_use.search.FindPic(area, fields.target, pictureTolerance); });
}

void OsCommands::findColour(const CommandCall &call)
{
    const SearchFields fields = searchFields(call);
    searchAndAct(call, fields, Reason::tr("the colour %1 is not on the screen").arg(fields.written),
        [&](const ScreenArea &area) {
            return m_use.search.FindColor(area, Channels::fromText(fields.target));
        });
}

template <typename Search>
void OsCommands::searchAndAct(
    const CommandCall &call, const SearchFields &fields, const QString &notFound, const Search &search)
{
    const ScreenArea area = areaOf(fields.region, m_use.screen);
    const ScriptPoint offset = fields.offset.isEmpty() ? ScriptPoint{} : ScriptPoint::fromText(fields.offset);
    const std::optional<Position> found = search(area);
    if (!found) {
        call.fail(notFound);
        return;
    }
    m_use.actions.act(PointActions::Search, call, fields.action,
        {coordinate(found->x, area.x, offset.x), coordinate(found->y, area.y, offset.y)});
}

void OsCommands::setClipboard(const CommandCall &call)
{
    const QString text = call.arg(0);
    m_use.clipboard.clear();
    m_use.clipboard.setText(text);
}

void OsCommands::getClipboard(const CommandCall &call)
{
    call.setVariable(call.arg(0), m_use.clipboard.text());
}

Next OsCommands::showTip(const CommandCall &call)
{
    m_use.launcher.showTip(call.arg(0, u":"_s, UnknownVariable::IsEmpty));
    return Next::Suspend;
}

// In edition 2 the run says it by itself.
void OsCommands::tellFailure(const CommandCall &call, const QString &what)
{
    if (call.edition() == Edition::One)
        m_use.notices.tell(what);
    call.fail(what);
}

void OsCommands::lockScreen(const CommandCall &call)
{
    if (m_use.session.lockScreen() == Session::Outcome::Unavailable)
        tellFailure(call, Reason::tr("the screen was not locked: no service on this machine locks it"));
}

void OsCommands::turnMonitorOff(const CommandCall &call)
{
    if (m_use.session.monitorOff() == Session::Outcome::Unavailable)
        tellFailure(call, Reason::tr("the monitor was not switched off: this display has no power control"));
}

void OsCommands::logOff(const CommandCall &)
{
    requireStarted(m_use.session.logOff());
}

void OsCommands::shutDown(const CommandCall &)
{
    requireStarted(m_use.session.shutDown());
}

void OsCommands::restart(const CommandCall &)
{
    requireStarted(m_use.session.restart());
}

void OsCommands::run(const CommandCall &call)
{
    const QString written = call.arg(0);
    const QString path = ResolvePath(written, m_use.state, m_use.folders);
    // A name without a folder is looked up where the system looks for programs.
    const bool isName = !path.contains(u'\\');
    const ProgramResult result
        = m_use.programs.run(isName ? path : m_use.paths.toSystem(path), call.list(), longestRun);
    using enum ProgramResult::Outcome;
    if (result.outcome == NotStarted)
        call.fail(Reason::tr("%1 cannot be started").arg(written));
    else if (result.outcome == TimedOut)
        call.fail(Reason::tr("%1 did not end within %2 s").arg(written).arg(longestRun / 1000));
    else if (result.outcome == TooMuchOutput)
        call.fail(
            Reason::tr("%1 wrote more than %2 MB").arg(written).arg(ProgramRunner::largestOutput >> 20));

    const int status = result.outcome == Crashed ? crashed : result.status;
    const QString statusVariable = call.arg(3);
    if (statusVariable.isEmpty() && status != 0)
        call.fail(Reason::tr("%1 ended with status %2").arg(written).arg(status));
    QString output = m_use.codec.fromSystem(result.output);
    while (output.endsWith(u'\n') || output.endsWith(u'\r'))
        output.chop(1);
    if (const QString variable = call.arg(2); !variable.isEmpty())
        call.setVariable(variable, output);
    if (!statusVariable.isEmpty())
        call.setVariable(statusVariable, QString::number(status));
}

void OsCommands::minimiseByTitle(const CommandCall &call)
{
    // In edition 1 the title is the argument text itself: nothing in it is a quote, a field, a variable or an
    // escape.
    const QString title = call.edition() == Edition::One
        ? QString(call.arguments()).replace(commaPlaceholder, commaEscape)
        : call.arg(0);
    const WindowHandle window = m_use.windows.byTitle(title);
    if (window == 0)
        call.fail(Reason::tr("there is no window with the title \"%1\"").arg(title));
    m_use.windows.minimise(window);
}

} // namespace plum
