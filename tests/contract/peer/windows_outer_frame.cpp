#include "contract/peer/outer_frame.h"

#include <qt_windows.h>

namespace plum::contract {

// Qt leaves the margins out by which a window is sized and of which nothing is seen.
QRect outerFrame(const QWidget &window)
{
    RECT area{};
    GetWindowRect(reinterpret_cast<HWND>(window.winId()), &area);
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

} // namespace plum::contract
