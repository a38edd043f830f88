#include "flight/flight_deed.h"

#include "flight/flight_words.h"

#include <algorithm>
#include <array>

namespace plum {

using Kind = FlightDeed::Kind;

namespace {

struct Row
{
    Kind kind;
    const char *name; // pages of older versions have it, too
    const char *text; // %1 is the first of the values
};

constexpr std::array rows{
    Row{Kind::AnotherRun, "another-run", QT_TRANSLATE_NOOP("plum::FlightWords", "another run begins: %1")},
    Row{Kind::Refused, "refused", QT_TRANSLATE_NOOP("plum::FlightWords", "refused: %1")},
    Row{Kind::ClipboardRead, "clipboard-read",
        QT_TRANSLATE_NOOP("plum::FlightWords", "clipboard read: %1 characters, %2")},
    Row{Kind::ClipboardSet, "clipboard-set",
        QT_TRANSLATE_NOOP("plum::FlightWords", "clipboard set: %1 characters, %2")},
    Row{Kind::ClipboardCleared, "clipboard-cleared",
        QT_TRANSLATE_NOOP("plum::FlightWords", "clipboard cleared")},
    Row{Kind::JavaScriptEvaluated, "javascript-evaluated",
        QT_TRANSLATE_NOOP("plum::FlightWords", "JavaScript of %1 characters: evaluated")},
    Row{Kind::JavaScriptFailed, "javascript-failed",
        QT_TRANSLATE_NOOP("plum::FlightWords", "JavaScript of %1 characters: failed, %2")},
    Row{Kind::KeyDown, "key-down", QT_TRANSLATE_NOOP("plum::FlightWords", "key %1 down")},
    Row{Kind::KeyUp, "key-up", QT_TRANSLATE_NOOP("plum::FlightWords", "key %1 up")},
    Row{Kind::Typed, "typed", QT_TRANSLATE_NOOP("plum::FlightWords", "typed %1 characters")},
    Row{Kind::KeysLetGo, "keys-let-go", QT_TRANSLATE_NOOP("plum::FlightWords", "every key let go")},
    Row{Kind::PointerMoved, "pointer-moved", QT_TRANSLATE_NOOP("plum::FlightWords", "pointer to %1:%2")},
    Row{Kind::LeftDown, "left-down", QT_TRANSLATE_NOOP("plum::FlightWords", "button left down")},
    Row{Kind::LeftUp, "left-up", QT_TRANSLATE_NOOP("plum::FlightWords", "button left up")},
    Row{Kind::RightDown, "right-down", QT_TRANSLATE_NOOP("plum::FlightWords", "button right down")},
    Row{Kind::RightUp, "right-up", QT_TRANSLATE_NOOP("plum::FlightWords", "button right up")},
    Row{Kind::ButtonsLetGo, "buttons-let-go", QT_TRANSLATE_NOOP("plum::FlightWords", "every button let go")},
    Row{Kind::ScreenLocked, "screen-locked", QT_TRANSLATE_NOOP("plum::FlightWords", "screen locked")},
    Row{Kind::ScreenNotLocked, "screen-not-locked",
        QT_TRANSLATE_NOOP("plum::FlightWords", "screen locked (not possible)")},
    Row{Kind::MonitorSwitchedOff, "monitor-off",
        QT_TRANSLATE_NOOP("plum::FlightWords", "monitor switched off")},
    Row{Kind::MonitorNotSwitchedOff, "monitor-not-off",
        QT_TRANSLATE_NOOP("plum::FlightWords", "monitor switched off (not possible)")},
    Row{Kind::LoggedOff, "log-off", QT_TRANSLATE_NOOP("plum::FlightWords", "log off")},
    Row{Kind::ShutDown, "shut-down", QT_TRANSLATE_NOOP("plum::FlightWords", "shut down")},
    Row{Kind::Restarted, "restart", QT_TRANSLATE_NOOP("plum::FlightWords", "restart")},
    Row{Kind::WindowClosed, "window-closed",
        QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 asked to close")},
    Row{Kind::WindowActivated, "window-activated",
        QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 activated")},
    Row{Kind::WindowHidden, "window-hidden", QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 hidden")},
    Row{Kind::WindowShown, "window-shown", QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 shown")},
    Row{Kind::WindowMinimised, "window-minimised",
        QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 minimised")},
    Row{Kind::WindowMaximised, "window-maximised",
        QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 maximised")},
    Row{Kind::WindowMoved, "window-moved",
        QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 moved to %2:%3")},
    Row{Kind::WindowFetched, "window-fetched",
        QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 fetched to this desktop")},
    Row{Kind::WindowKeptAbove, "window-kept-above",
        QT_TRANSLATE_NOOP("plum::FlightWords", "window %1 kept above all others")},
    Row{Kind::Opened, "opened", QT_TRANSLATE_NOOP("plum::FlightWords", "opened %1")},
    Row{Kind::NotOpened, "not-opened", QT_TRANSLATE_NOOP("plum::FlightWords", "opened %1 (failed)")},
    Row{Kind::Started, "started", QT_TRANSLATE_NOOP("plum::FlightWords", "started %1")},
    Row{Kind::NotStarted, "not-started", QT_TRANSLATE_NOOP("plum::FlightWords", "started %1 (failed)")},
    Row{Kind::ColourSeen, "colour-seen",
        QT_TRANSLATE_NOOP("plum::FlightWords", "colour %1 in %2: seen at %3")},
    Row{Kind::ColourNotSeen, "colour-not-seen",
        QT_TRANSLATE_NOOP("plum::FlightWords", "colour %1 in %2: not seen")},
    Row{Kind::PictureSeen, "picture-seen",
        QT_TRANSLATE_NOOP("plum::FlightWords", "picture %1 in %2: seen at %3")},
    Row{Kind::PictureNotSeen, "picture-not-seen",
        QT_TRANSLATE_NOOP("plum::FlightWords", "picture %1 in %2: not seen")},
    Row{Kind::NearestMiss, "nearest-miss",
        QT_TRANSLATE_NOOP("plum::FlightWords",
            "nearest miss at %1: %2 of %3 pixels differ (red %4, green %5, blue %6), in the picture at %7")},
    Row{Kind::NothingAlike, "nothing-alike",
        QT_TRANSLATE_NOOP("plum::FlightWords", "nothing in there is like it")},
    Row{Kind::StopAsked, "stop-asked", QT_TRANSLATE_NOOP("plum::FlightWords", "stop asked for")},
};

constexpr bool areInOrder()
{
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (rows[index].kind != static_cast<Kind>(index))
            return false;
    }
    return rows.back().kind == Kind::StopAsked;
}
static_assert(areInOrder());

const Row &rowOf(Kind kind)
{
    return rows[static_cast<std::size_t>(kind)];
}

// In one go, since a value may hold what looks like a mark.
QString filledIn(const QString &text, const QStringList &values)
{
    QString filled;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const int number = text[at] == u'%' && at + 1 < text.size() ? text[at + 1].digitValue() : -1;
        if (number < 1)
            filled += text[at];
        else
            filled += values.value(text[++at].digitValue() - 1);
    }
    return filled;
}

} // namespace

QString FlightDeed::toText() const
{
    return filledIn(FlightWords::tr(rowOf(kind).text), values);
}

bool FlightDeed::isOfSearch() const
{
    return kind == Kind::ColourSeen || kind == Kind::ColourNotSeen || kind == Kind::PictureSeen
        || kind == Kind::PictureNotSeen;
}

bool FlightDeed::isOfMiss() const
{
    return kind == Kind::NearestMiss || kind == Kind::NothingAlike;
}

QString FlightDeed::nameOf(Kind kind)
{
    return QString::fromLatin1(rowOf(kind).name);
}

std::optional<Kind> FlightDeed::kindOf(const QString &name)
{
    const auto found
        = std::ranges::find_if(rows, [&](const Row &row) { return name == QLatin1StringView(row.name); });
    return found == rows.end() ? std::nullopt : std::optional(found->kind);
}

} // namespace plum
