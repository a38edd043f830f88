#include "commands/os_commands.h"

#include "commands/mouse_clicks.h"
#include "commands/notices.h"
#include "commands/path_resolution.h"
#include "engine/conversions.h"
#include "engine/launcher.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/text_functions.h"
#include "platform/clipboard.h"
#include "platform/desktop_windows.h"
#include "platform/pointer.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// How far a picture's channels may be off: much in red, nearly anything in green, anything in blue.
constexpr QStringView pictureTolerance = u"58DDFF";

constexpr QStringView pointVariable = u"tarnwick_xy";

// A coordinate of the found point, wrapped to 16 bits as all sums of coordinates are.
qint16 coordinate(const QString &found, int field, qint32 regionStart, qint16 offset)
{
    const qint64 sum = qint64(toInt32(Piece(found, u","_s, field))) + regionStart + offset;
    return static_cast<qint16>(static_cast<quint16>(sum));
}

QList<CommandInfo> choicesOf(std::span<const OsCommands::Action> actions)
{
    QList<CommandInfo> choices;
    for (const OsCommands::Action &action : actions)
        choices += {action.word, {}, action.summary};
    return choices;
}

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
    static const QList<CommandInfo> actionWords = choicesOf(actions());
    static const std::array rows{
        Row{{u"find_pic",
                {{{u"picture", Path}, {u"region", Region, u"the main screen"}, {u"offset", Offset, u"0:0"},
                    Field{u"action", Choice, u"nothing"}.oneOfOrVariable(actionWords)}},
                u"Looks for a picture on the screen and acts at its top left corner: click, d_click, r_click "
                u"where the pointer is, move, get_xy, get_x, get_y, set_clipboard; any other word is the "
                u"variable that receives the point.",
                Touches::Desktop},
            &OsCommands::findPicture},
        Row{{u"find_color",
                {{{u"colour", Colour}, {u"region", Region, u"the main screen"}, {u"offset", Offset, u"0:0"},
                    Field{u"action", Choice, u"nothing"}.oneOfOrVariable(actionWords)}},
                u"Looks for the first pixel of exactly one colour and acts there as find_pic does.",
                Touches::Desktop},
            &OsCommands::findColour},
        Row{{u"set_clipboard", {{{u"text", Text}}}, u"Puts a text on the clipboard in place of all else.",
                Touches::Desktop},
            &OsCommands::setClipboard},
        Row{{u"get_clipboard", {{{u"variable", Variable}}}, u"Stores the clipboard's text.",
                Touches::Desktop},
            &OsCommands::getClipboard},
        Row{{u"tips", {{{u"text", Text}}}, u"Shows a tip; the script goes on when it is closed."},
            &OsCommands::showTip},
        Row{{u"lock_screen", {}, u"Locks the screen.", Touches::Desktop}, &OsCommands::lockScreen},
        Row{{u"off_monitor", {}, u"Switches the monitor off.", Touches::Desktop},
            &OsCommands::turnMonitorOff},
        Row{{u"log_off", {}, u"Ends the session without asking programs.", Touches::Desktop},
            &OsCommands::logOff},
        Row{{u"shut_down", {}, u"Switches the machine off without asking programs.", Touches::Desktop},
            &OsCommands::shutDown},
        Row{{u"restart", {}, u"Restarts the machine without asking programs.", Touches::Desktop},
            &OsCommands::restart},
        Row{{u"窗口最小化", {{{u"title", Text}}},
                u"Minimises the window with exactly this title, written without quotes.", Touches::Desktop},
            &OsCommands::minimiseByTitle},
    };
    return rows;
}

std::span<const OsCommands::Action> OsCommands::actions()
{
    static constexpr std::array rows{
        Action{u"click", &OsCommands::clickAt, u"Moves there and clicks."},
        Action{u"d_click", &OsCommands::doubleClickAt, u"Moves there and double-clicks."},
        Action{u"r_click", &OsCommands::rightClick, u"Right-clicks where the pointer is."},
        Action{u"move", &OsCommands::moveTo, u"Moves there."},
        Action{u"get_xy", &OsCommands::storePoint, u"Stores the point in tarnwick_xy."},
        Action{u"get_x", &OsCommands::storeX, u"Stores its x in tarnwick_xy."},
        Action{u"get_y", &OsCommands::storeY, u"Stores its y in tarnwick_xy."},
        Action{u"set_clipboard", &OsCommands::copyPoint, u"Puts the point on the clipboard."},
    };
    return rows;
}

OsCommands::OsCommands(const Needs &needs)
    : m_use(needs)
    , m_search({needs.screen, needs.launcher, needs.paths})
{
}

OsCommands::SearchFields OsCommands::searchFields(const CommandCall &call) const
{
    const QString target = ResolvePath(call.arg(0), m_use.state, m_use.folders);
    const QString region = call.arg(1);
    const QString offset = call.arg(2);
    return {target, region, offset, call.arg(3)};
}

OsCommands::Region OsCommands::regionOf(const QString &text) const
{
    if (text.isEmpty()) {
        const QSize size = m_use.screen.mainScreenSize();
        return {0, 0, size.width(), size.height()};
    }
    const auto field = [&](int index) { return toInt32(Piece(text, u":"_s, index)); };
    return {field(0), field(1), field(2), field(3)};
}

void OsCommands::findPicture(const CommandCall &call)
{
    const SearchFields fields = searchFields(call);
    // A missing picture is all that is reported, even where the other fields make no sense.
    const bool exists = call.edition() == Edition::One ? m_search.requirePicture(fields.target)
                                                       : m_search.hasPicture(fields.target);
    if (!exists) {
        call.fail(u"there is no picture %1"_s.arg(fields.target));
        return;
    }
    searchAndAct(
        call, fields, u"the picture %1 is not on the screen"_s.arg(fields.target), [&](const Region &region) {
            return m_search.FindPic(
                region.x, region.y, region.width, region.height, fields.target, pictureTolerance.toString());
        });
}

void OsCommands::findColour(const CommandCall &call)
{
    const SearchFields fields = searchFields(call);
    searchAndAct(
        call, fields, u"the colour %1 is not on the screen"_s.arg(fields.target), [&](const Region &region) {
            return m_search.FindColor(region.x, region.y, region.width, region.height, fields.target);
        });
}

template <typename Search>
void OsCommands::searchAndAct(
    const CommandCall &call, const SearchFields &fields, const QString &notFound, const Search &search)
{
    const Region region = regionOf(fields.region);
    const ScriptPoint offset = fields.offset.isEmpty() ? ScriptPoint{} : ScriptPoint::fromText(fields.offset);
    const QString found = search(region);
    if (found.isEmpty()) {
        call.fail(notFound);
        return;
    }
    act(call, fields.action,
        {coordinate(found, 0, region.x, offset.x), coordinate(found, 1, region.y, offset.y)});
}

void OsCommands::act(const CommandCall &call, const QString &action, ScriptPoint point)
{
    if (action.isEmpty())
        return;
    for (const Action &known : actions()) {
        if (known.word == action) {
            (this->*known.routine)(call, point);
            return;
        }
    }
    call.setVariable(action, point.toText());
}

void OsCommands::clickAt(const CommandCall &, ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
    m_use.clicks.leftClick();
}

void OsCommands::doubleClickAt(const CommandCall &, ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
    m_use.clicks.doubleClick();
}

// Kept: the right click stays where the pointer is.
void OsCommands::rightClick(const CommandCall &, ScriptPoint)
{
    m_use.clicks.rightClick();
}

void OsCommands::moveTo(const CommandCall &, ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
}

void OsCommands::storePoint(const CommandCall &call, ScriptPoint point)
{
    call.setVariable(pointVariable.toString(), point.toText());
}

void OsCommands::storeX(const CommandCall &call, ScriptPoint point)
{
    call.setVariable(pointVariable.toString(), QString::number(point.x));
}

void OsCommands::storeY(const CommandCall &call, ScriptPoint point)
{
    call.setVariable(pointVariable.toString(), QString::number(point.y));
}

void OsCommands::copyPoint(const CommandCall &, ScriptPoint point)
{
    putOnClipboard(point.toText());
}

void OsCommands::putOnClipboard(const QString &text)
{
    m_use.clipboard.clear();
    m_use.clipboard.setText(text);
}

void OsCommands::setClipboard(const CommandCall &call)
{
    putOnClipboard(call.arg(0));
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
        tellFailure(call, u"the screen was not locked: no service on this machine locks it"_s);
}

void OsCommands::turnMonitorOff(const CommandCall &call)
{
    if (m_use.session.monitorOff() == Session::Outcome::Unavailable)
        tellFailure(call, u"the monitor was not switched off: this display has no power control"_s);
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

void OsCommands::minimiseByTitle(const CommandCall &call)
{
    // In edition 1 the title is the argument text itself: nothing in it is a quote, a field, a variable or an
    // escape.
    const QString title = call.edition() == Edition::One
        ? QString(call.arguments()).replace(commaPlaceholder, commaEscape)
        : call.arg(0);
    const WindowHandle window = m_use.windows.byTitle(title);
    if (window == 0)
        call.fail(u"there is no window with the title \"%1\""_s.arg(title));
    m_use.windows.minimise(window);
}

} // namespace plum
