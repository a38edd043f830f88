#include "waits/wait_commands.h"

#include "commands/path_resolution.h"
#include "commands/screen_fields.h"
#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/run_state.h"
#include "platform/paths.h"
#include "platform/screen.h"
#include "search/screen_region.h"
#include "waits/file_news.h"

#include <QFileInfo>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView usualTime = u"10000"; // milliseconds

// The pixels of an area as they are now; empty without a desktop. A copy: a capture lasts until the next one.
std::vector<quint32> pixelsOf(Screen &screen, const ScreenArea &area)
{
    const auto region = captureRegion(screen, area.x, area.y, area.width, area.height);
    if (!region)
        return {};
    constexpr quint32 colours = 0xffffff; // the fourth byte means nothing
    std::vector<quint32> pixels(region->captured.pixels.begin(), region->captured.pixels.end());
    for (quint32 &pixel : pixels)
        pixel &= colours;
    return pixels;
}

} // namespace

std::span<const WaitCommands::Row> WaitCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    constexpr Field time{u"time", Milliseconds, usualTime};
    constexpr Field area{u"region", Region, u"the main screen"};
    static constexpr std::array rows{
        Row{{u"picture", {{{u"picture", Path}, area, time, Field{u"variable", Variable}.optional()}},
                u"Waits until a picture is seen and stores where.", Touches::Desktop, Editions::Two,
                {{SeeScreen}, {ReadFile, 0}}},
            &WaitCommands::picture},
        Row{{u"color", {{{u"colour", Colour}, area, time, Field{u"variable", Variable}.optional()}},
                u"Waits until a colour is seen and stores where.", Touches::Desktop, Editions::Two,
                {{SeeScreen}}},
            &WaitCommands::colour},
        Row{{u"window", {{{u"title", Text}, time, Field{u"variable", Variable}.optional()}},
                u"Waits for a window with exactly this title and stores its handle.", Touches::Desktop,
                Editions::Two, {{SeeWindows}}},
            &WaitCommands::window},
        Row{{u"gone", {{{u"window", Handle}, time}}, u"Waits until a window is gone.", Touches::Desktop,
                Editions::Two, {{SeeWindows}}},
            &WaitCommands::gone},
        Row{{u"file", {{{u"path", Path}, time}}, u"Waits until a file or a folder is there.",
                Touches::Nothing, Editions::Two, {{ReadFile, 0}}},
            &WaitCommands::file},
        Row{{u"change", {{area, time}}, u"Waits until a part of the screen looks different.",
                Touches::Desktop, Editions::Two, {{SeeScreen}}},
            &WaitCommands::change},
    };
    return rows;
}

bool WaitCommands::waitUntil(const CommandCall &call, int timeField, const QString &missing,
    const std::function<bool()> &look, const Patience::Listen &listen) const
{
    const QString written = call.arg(timeField);
    const double time = toDouble(written.isEmpty() ? usualTime : QStringView(written));
    if (m_use.patience.waitUntil(static_cast<qint64>(std::max(time, 0.0)), look, listen))
        return true;
    call.fail(Reason::tr("%1 within %2 ms").arg(missing, QString::number(time, 'f', 0)));
    return false;
}

void WaitCommands::place(const CommandCall &call, const QString &missing, const ScreenArea &area,
    const std::function<std::optional<Position>()> &search)
{
    std::optional<Position> found;
    const auto look = [&] {
        found = search();
        return found.has_value();
    };
    if (!waitUntil(call, 2, missing, look))
        return;
    if (const QString variable = call.arg(3); !variable.isEmpty())
        call.setVariable(variable, u"%1:%2"_s.arg(found->x + area.x).arg(found->y + area.y));
}

void WaitCommands::picture(const CommandCall &call)
{
    const QString written = call.arg(0);
    const QString path = ResolvePath(written, m_use.state, m_use.folders);
    if (!m_use.search.hasPicture(path)) {
        call.fail(Reason::tr("there is no picture %1").arg(written));
        return;
    }
    const ScreenArea area = areaOf(call.arg(1), m_use.screen);
    place(
        call, Reason::tr("the picture %1 was not seen").arg(written), area, [&]() -> std::optional<Position> {
            return m_use.search.hasPicture(path) ? m_use.search.FindPic(area, path, pictureTolerance)
                                                 : std::nullopt;
        });
}

void WaitCommands::colour(const CommandCall &call)
{
    const QString text = call.arg(0);
    const Channels wanted = Channels::fromText(text);
    const ScreenArea area = areaOf(call.arg(1), m_use.screen);
    place(call, Reason::tr("the colour %1 was not seen").arg(text), area,
        [&] { return m_use.search.FindColor(area, wanted); });
}

void WaitCommands::window(const CommandCall &call)
{
    const QString title = call.arg(0);
    WindowHandle found = 0;
    const auto look = [&] {
        found = m_use.windows.byTitle(title);
        return found != 0;
    };
    if (!waitUntil(call, 1, Reason::tr("no window had the title \"%1\"").arg(title), look,
            [&] { return m_use.windows.newsOfTitles(); }))
        return;
    if (const QString variable = call.arg(2); !variable.isEmpty())
        call.setVariable(variable, QString::number(found));
}

void WaitCommands::gone(const CommandCall &call)
{
    const WindowHandle window = toInt32(call.arg(0));
    waitUntil(
        call, 1, Reason::tr("the window %1 did not go").arg(window),
        [&] { return m_use.windows.rectangle(window).isNull(); },
        [&] { return m_use.windows.newsOfEnd(window); });
}

void WaitCommands::file(const CommandCall &call)
{
    const QString path = ResolvePath(call.arg(0), m_use.state, m_use.folders);
    const QString file = m_use.paths.toSystem(path);
    if (!m_use.paths.mayRead(file)) {
        call.fail(Reason::tr("%1 cannot be waited for").arg(call.arg(0)));
        return;
    }
    waitUntil(
        call, 1, Reason::tr("%1 did not come").arg(call.arg(0)), [&] { return QFileInfo::exists(file); },
        [&] { return std::make_unique<FileNews>(file); });
}

void WaitCommands::change(const CommandCall &call)
{
    const ScreenArea area = areaOf(call.arg(0), m_use.screen);
    const std::vector<quint32> before = pixelsOf(m_use.screen, area);
    waitUntil(call, 1, Reason::tr("nothing changed"), [&] { return pixelsOf(m_use.screen, area) != before; });
}

} // namespace plum
