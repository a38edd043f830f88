#pragma once

#include "platform/desktop_windows.h"

#include <QHash>

#include <array>
#include <functional>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace plum {

class X11Connection;

// Windows through the window manager, by the Extended Window Manager Hints. A handle is the window of the
// program itself, not the frame around it; rectangles and moves are those of the frame.
class X11Windows final : public Windows
{
public:
    explicit X11Windows(X11Connection &connection)
        : m_connection(connection)
    {
    }

    WindowHandle foreground() override;
    WindowHandle underPointer() override;
    WindowHandle byTitle(const QString &title) override;
    bool isOnScreen(WindowHandle window) override;
    QRect rectangle(WindowHandle window) override;
    void close(WindowHandle window) override;
    void activate(WindowHandle window) override;
    void hide(WindowHandle window) override;
    void show(WindowHandle window) override;
    void minimise(WindowHandle window) override;
    void maximise(WindowHandle window) override;
    void moveTo(WindowHandle window, QPoint corner) override;
    void bringHere(WindowHandle window) override;
    void setTopmost(WindowHandle window) override;

private:
    struct FrameExtents
    {
        int left = 0;
        int right = 0;
        int top = 0;
        int bottom = 0;
    };

    // ICCCM states of a window that a window manager knows.
    enum class State : quint32 {
        Withdrawn = 0,
        Normal = 1,
        Iconic = 3,
    };

    std::vector<quint32> numbers(xcb_window_t window, const char *property);
    QString title(xcb_window_t window);
    std::optional<State> state(xcb_window_t window);
    bool hasState(xcb_window_t window, const char *name);
    bool isViewable(xcb_window_t window);
    bool isHidden(xcb_window_t window);
    bool isOnThisDesktop(xcb_window_t window);
    bool isListed(xcb_window_t window);
    bool isWhole(xcb_window_t window);
    bool exists(xcb_window_t window);
    bool managerSupports(const char *name);
    FrameExtents frameExtents(xcb_window_t window);
    std::optional<QPoint> clientCorner(xcb_window_t window);
    std::vector<xcb_window_t> topLevels();
    xcb_window_t clientBelow(xcb_window_t window);

    void askManager(xcb_window_t window, const char *message, std::array<quint32, 5> data);
    void requestMove(xcb_window_t window, QPoint corner);
    bool waitFor(xcb_window_t window, const std::function<bool()> &condition);

    X11Connection &m_connection;
    QHash<WindowHandle, QRect> m_hidden; // where the windows were that hide() took off the screen
};

} // namespace plum
