#pragma once

#include "search/colour_text.h"
#include "search/find_pic_scan.h"
#include "search/picture_cache.h"

#include <QString>

#include <optional>

namespace plum {

class Launcher;
class Paths;
class Screen;
class SearchAnswers;
class SearchObserver;
class StopSignal;

// A part of the screen to search, in pixels of the main screen.
struct ScreenArea
{
    qint32 x = 0;
    qint32 y = 0;
    qint32 width = 0;
    qint32 height = 0;
};

// Finds a colour or a picture on the screen. Positions count from the area's top left corner; there is none
// when nothing is found.
class ScreenSearch
{
public:
    struct Needs
    {
        Screen &screen;
        Launcher &launcher;
        Paths &paths;
        const StopSignal *stop = nullptr; // ends a search, and the run with it
        SearchObserver *observer = nullptr; // hears of every search
        SearchAnswers *answers = nullptr; // knows what is found, in the place of the screen
    };

    explicit ScreenSearch(const Needs &needs);

    // The first pixel of exactly `colour`.
    std::optional<Position> FindColor(const ScreenArea &area, Channels colour);

    // The first place where the picture in the file at `path` is seen, each channel within its part of
    // `tolerance`. A file that holds no readable picture is never found.
    std::optional<Position> FindPic(const ScreenArea &area, const QString &path, Channels tolerance);

    // Whether the picture's file exists; tells the user when it does not.
    bool requirePicture(const QString &path);

    bool hasPicture(const QString &path) const;

private:
    Needs m_use;
    PictureCache m_pictures;
    FindPicScan m_scan;
};

} // namespace plum
