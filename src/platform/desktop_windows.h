#pragma once

#include "platform/news.h"

#include <QPoint>
#include <QRect>
#include <QString>

#include <memory>
#include <vector>

namespace plum {

// A window of the desktop as scripts know it: a number that stays the same for the window's life. 0 is no
// window.
using WindowHandle = qint32;

// Top-level windows of the desktop, of any program. Coordinates are physical screen pixels.
//
// A handle that is 0, or names a window that has gone (even between two calls), makes every method do
// nothing; a read then returns its empty value. Every method returns when the change is whole: the next call
// sees rectangle, state and order as they stay. A program that does not react is waited for half a second at
// most, a window manager that does not two seconds.
class Windows
{
public:
    virtual ~Windows() = default;

    // The window that has the user's attention; 0 when there is none.
    virtual WindowHandle foreground() = 0;

    // The window that is visible under the pointer; 0 over the bare desktop. Where the system knows the
    // controls in a window as windows, it is the control; elsewhere the top-level window.
    virtual WindowHandle underPointer() = 0;

    // The top-level window that a control stands in; itself where controls are no windows.
    virtual WindowHandle topLevel(WindowHandle window) { return window; }

    // A top-level window whose title is exactly `title`; 0 when there is none.
    virtual WindowHandle byTitle(const QString &title) = 0;

    // The title of the window, by which `byTitle` finds it.
    virtual QString title(WindowHandle window) = 0;

    // A window of this program's own, which Qt knows under the number `id`; 0 while it is not shown. Where
    // the system and Qt have the same number for it, it is that one.
    virtual WindowHandle own(quintptr id) { return static_cast<WindowHandle>(id); }

    // The top-level windows that are not hidden, the one above all others first; minimised ones are among
    // them.
    virtual std::vector<WindowHandle> stacking() = 0;

    // Whether the window is among those that the user can bring to sight by moving others away: shown, not
    // minimised, and not put away on another virtual desktop.
    virtual bool isOnScreen(WindowHandle window) = 0;

    // The rectangle of the window with its frame. `right()` and `bottom()` of QRect are inclusive and
    // therefore not what scripts call right and bottom: use x() + width() and y() + height().
    // A null rectangle for no window.
    virtual QRect rectangle(WindowHandle window) = 0;

    // Asks the window to close, as its close button would; the program may decline.
    virtual void close(WindowHandle window) = 0;

    // Brings the window to the front and gives it the keyboard. A window manager restores one that is
    // minimised; Windows does not.
    virtual void activate(WindowHandle window) = 0;

    // Takes the window off the screen and out of the lists of windows, without closing it.
    virtual void hide(WindowHandle window) = 0;

    // Shows a hidden window again where it was, as large as it was, and maximised if it was. Then, also when
    // it was not hidden, brings it to the front and gives it the keyboard. A minimised window stays
    // minimised.
    virtual void show(WindowHandle window) = 0;

    // A hidden window comes back by these: as an icon, or over the whole screen.
    virtual void minimise(WindowHandle window) = 0;
    virtual void maximise(WindowHandle window) = 0;

    // Puts the outer top left corner of the frame at `corner`, keeping the size, that of a maximised window
    // too, then brings the window to the front and gives it the keyboard. Points off the screen are allowed
    // as far as the window manager allows them. A hidden window stays hidden, a minimised one minimised.
    virtual void moveTo(WindowHandle window, QPoint corner) = 0;

    // Fetches a window that was put away on another virtual desktop to the one that the user sees, without
    // activating it.
    virtual void bringHere(WindowHandle window) = 0;

    // Keeps the window above all others without moving, sizing or activating it.
    virtual void setTopmost(WindowHandle window) = 0;

    // When `byTitle` is worth another look, and when `window` has gone. Null where the system does not tell.
    virtual std::unique_ptr<News> newsOfTitles() = 0;
    virtual std::unique_ptr<News> newsOfEnd(WindowHandle window) = 0;
};

} // namespace plum
