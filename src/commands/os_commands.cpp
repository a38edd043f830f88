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

// Where the machine has no such service, the program that stands for it could not be started.
void requireStarted(Session::Outcome outcome)
{
    if (outcome == Session::Outcome::Unavailable)
        throw RunTimeError(RunTimeError::FileNotFound);
}

} // namespace

std::span<const OsCommands::Row> OsCommands::table()
{
    using enum FieldKind;
    static constexpr std::array rows{
        Row{{u"find_pic",
                {{{u"picture", Path}, {u"region", Region, u"the main screen"}, {u"offset", Offset, u"0:0"},
                    {u"action", Choice, u"nothing"}}},
                u"Looks for a picture on the screen and acts at its top left corner: click, d_click, r_click "
                u"where the pointer is, move, get_xy, get_x, get_y, set_clipboard; any other word is the "
                u"variable that receives the point."},
            &OsCommands::findPicture},
        Row{{u"find_color",
                {{{u"colour", Colour}, {u"region", Region, u"the main screen"}, {u"offset", Offset, u"0:0"},
                    {u"action", Choice, u"nothing"}}},
                u"Looks for the first pixel of exactly one colour and acts there as find_pic does."},
            &OsCommands::findColour},
        Row{{u"set_clipboard", {{{u"text", Text}}}, u"Puts a text on the clipboard in place of all else."},
            &OsCommands::setClipboard},
        Row{{u"get_clipboard", {{{u"variable", Variable}}}, u"Stores the clipboard's text."},
            &OsCommands::getClipboard},
        Row{{u"tips", {{{u"text", Text}}}, u"Shows a tip; the script goes on when it is closed."},
            &OsCommands::showTip},
        Row{{u"lock_screen", {}, u"Locks the screen."}, &OsCommands::lockScreen},
        Row{{u"off_monitor", {}, u"Switches the monitor off."}, &OsCommands::turnMonitorOff},
        Row{{u"log_off", {}, u"Ends the session without asking programs."}, &OsCommands::logOff},
        Row{{u"shut_down", {}, u"Switches the machine off without asking programs."}, &OsCommands::shutDown},
        Row{{u"restart", {}, u"Restarts the machine without asking programs."}, &OsCommands::restart},
        Row{{u"窗口最小化", {{{u"title", Text}}},
                u"Minimises the window with exactly this title, written without quotes."},
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

OsCommands::OsCommands(const ArgumentReader &reader, const Needs &needs)
    : TableHandler(reader)
    , m_use(needs)
    , m_search({needs.screen, needs.launcher, needs.paths})
{
}

OsCommands::SearchFields OsCommands::searchFields(const CommandCall &call) const
{
    const QString target = ResolvePath(call.arg(0), m_use.state, m_use.paths);
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
    if (!m_search.requirePicture(fields.target))
        return;
    searchAndAct(fields, [&](const Region &region) {
        return m_search.FindPic(
            region.x, region.y, region.width, region.height, fields.target, pictureTolerance.toString());
    });
}

void OsCommands::findColour(const CommandCall &call)
{
    const SearchFields fields = searchFields(call);
    searchAndAct(fields, [&](const Region &region) {
        return m_search.FindColor(region.x, region.y, region.width, region.height, fields.target);
    });
}

template <typename Search> void OsCommands::searchAndAct(const SearchFields &fields, const Search &search)
{
    const Region region = regionOf(fields.region);
    const ScriptPoint offset = fields.offset.isEmpty() ? ScriptPoint{} : ScriptPoint::fromText(fields.offset);
    const QString found = search(region);
    if (found.isEmpty())
        return;
    act(fields.action, {coordinate(found, 0, region.x, offset.x), coordinate(found, 1, region.y, offset.y)});
}

void OsCommands::act(const QString &action, ScriptPoint point)
{
    if (action.isEmpty())
        return;
    for (const Action &known : actions()) {
        if (known.word == action) {
            (this->*known.routine)(point);
            return;
        }
    }
    m_use.state.vardict.SetVar(action, point.toText());
}

void OsCommands::clickAt(ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
    m_use.clicks.leftClick();
}

void OsCommands::doubleClickAt(ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
    m_use.clicks.doubleClick();
}

// Kept: the right click stays where the pointer is.
void OsCommands::rightClick(ScriptPoint)
{
    m_use.clicks.rightClick();
}

void OsCommands::moveTo(ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
}

void OsCommands::storePoint(ScriptPoint point)
{
    m_use.state.vardict.SetVar(pointVariable.toString(), point.toText());
}

void OsCommands::storeX(ScriptPoint point)
{
    m_use.state.vardict.SetVar(pointVariable.toString(), QString::number(point.x));
}

void OsCommands::storeY(ScriptPoint point)
{
    m_use.state.vardict.SetVar(pointVariable.toString(), QString::number(point.y));
}

void OsCommands::copyPoint(ScriptPoint point)
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
    m_use.state.vardict.SetVar(call.arg(0), m_use.clipboard.text());
}

void OsCommands::showTip(const CommandCall &call)
{
    m_use.launcher.showTip(call.arg(0, u":"_s, UnknownVariable::IsEmpty));
}

void OsCommands::lockScreen(const CommandCall &)
{
    if (m_use.session.lockScreen() == Session::Outcome::Unavailable)
        m_use.notices.tell(u"the screen was not locked: no service on this machine locks it"_s);
}

void OsCommands::turnMonitorOff(const CommandCall &)
{
    if (m_use.session.monitorOff() == Session::Outcome::Unavailable)
        m_use.notices.tell(u"the monitor was not switched off: this display has no power control"_s);
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
    // The title is the argument text itself: nothing in it is a quote, a field or a variable.
    m_use.windows.minimise(m_use.windows.byTitle(call.arguments()));
}

} // namespace plum
