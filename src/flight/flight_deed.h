#pragma once

#include <QStringList>

#include <optional>

namespace plum {

// One thing that a line did or met, by its kind: what it comes to in words depends on who reads it.
struct FlightDeed
{
    enum class Kind {
        AnotherRun, // the script's name
        Refused, // the reason, a sentence
        ClipboardRead, // the count of its characters, and the text
        ClipboardSet, // the same
        ClipboardCleared,
        JavaScriptEvaluated, // the count of its characters
        JavaScriptFailed, // the same, and the reason
        KeyDown, // the key
        KeyUp, // the key
        Typed, // the count of characters
        KeysLetGo,
        PointerMoved, // x, y
        LeftDown,
        LeftUp,
        RightDown,
        RightUp,
        ButtonsLetGo,
        ScreenLocked,
        ScreenNotLocked,
        MonitorSwitchedOff,
        MonitorNotSwitchedOff,
        LoggedOff,
        ShutDown,
        Restarted,
        WindowClosed, // the window, here and below
        WindowActivated,
        WindowHidden,
        WindowShown,
        WindowMinimised,
        WindowMaximised,
        WindowMoved, // and x, y
        WindowFetched,
        WindowKeptAbove,
        Opened, // what, with its parameters
        NotOpened, // the same
        Started, // the program, with its parameters
        NotStarted, // the same
        ColourSeen, // colour, area, place
        ColourNotSeen, // colour, area
        PictureSeen, // path, area, place
        PictureNotSeen, // path, area
        NearestMiss, // place, pixels that differ, of how many, by red, green, blue, which ones
        NothingAlike,
        StopAsked, // by the user
    };

    Kind kind = Kind::AnotherRun;
    QStringList values = {};

    bool operator==(const FlightDeed &) const = default;

    // In the language of the session.
    QString toText() const;

    // Whether it says how a search of the screen went, and whether it only tells more of one that found
    // nothing.
    bool isOfSearch() const;
    bool isOfMiss() const;

    // What a kind is called where programs read it, in every language.
    static QString nameOf(Kind kind);
    static std::optional<Kind> kindOf(const QString &name);
};

} // namespace plum
