#pragma once

#include "search/find_pic_scan.h"
#include "search/picture_cache.h"

#include <QString>

namespace plum {

class Launcher;
class Paths;
class Screen;

// Finds a colour or a picture on the screen. Results are "X,Y", counted from the region's top left corner,
// and empty when nothing is found.
class ScreenSearch
{
public:
    struct Needs
    {
        Screen &screen;
        Launcher &launcher;
        Paths &paths;
    };

    explicit ScreenSearch(const Needs &needs);

    // The first pixel of exactly `colour`, "RRGGBB". Another text raises a type mismatch (13).
    QString FindColor(qint32 x, qint32 y, qint32 width, qint32 height, const QString &colour);

    // The first place where the picture in the file at `path` is seen, each channel within its part of
    // `tolerance`, "RRGGBB". A file that holds no readable picture is never found.
    QString FindPic(
        qint32 x, qint32 y, qint32 width, qint32 height, const QString &path, const QString &tolerance);

    // Whether the picture's file exists; tells the user when it does not.
    bool requirePicture(const QString &path);

    bool hasPicture(const QString &path) const;

private:
    Needs m_use;
    PictureCache m_pictures;
    FindPicScan m_scan;
};

} // namespace plum
