#pragma once

#include "engine/command_call.h"
#include "picker/desktop_view.h"

#include <QStringList>

namespace plum {

// The line of a script that somebody picks something for.
enum class PickedLine {
    Move, // mouse.move
    Colour, // os.find_color
    Window, // window.get
    Picture, // os.find_pic
};

// A point of the desktop, and what is there.
struct PickedPoint
{
    QPoint point;
    QRgb colour = 0;
    std::optional<DesktopView::SeenWindow> window = {};
};

PickedPoint pointIn(const DesktopView &view, QPoint point);

// For people, a fact a line: the point, its colour, the window with its title, handle, corner, and the
// point's offset in it.
QStringList factsOf(const PickedPoint &picked);

// What a script writes to do something at the point. A window is asked for where the pointer has gone, so
// that takes two lines. `Picture` has no line of a point.
QStringList linesFor(PickedLine line, const PickedPoint &picked, Edition edition);

// What a script writes to look for a picture of its folder.
QString lineForPicture(const QString &fileName, Edition edition);

} // namespace plum
