#pragma once

#include "platform/desktop_windows.h"
#include "platform/wayland/sway/sway_socket.h"
#include "platform/wayland/sway/sway_tree.h"
#include "platform/wayland/sway/sway_window_news.h"

#include <functional>

namespace plum {

// Windows as sway has them; a handle is sway's number of the container. What sway lacks is made of what it
// has: a window is hidden or minimised in the scratchpad, and the one that fills the screen is a full screen.
// A window that is moved floats from then on.
class SwayWindows final : public Windows
{
public:
    // `pointer` tells where the pointer is.
    explicit SwayWindows(std::function<QPoint()> pointer)
        : m_pointer(std::move(pointer))
    {
    }

    WindowHandle foreground() override;
    WindowHandle underPointer() override;
    WindowHandle byTitle(const QString &title) override;
    QString title(WindowHandle window) override;
    WindowHandle own(quintptr id) override;
    std::vector<WindowHandle> stacking() override;
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
    std::unique_ptr<News> newsOfTitles() override { return SwayWindowNews::listening(); }
    std::unique_ptr<News> newsOfEnd(WindowHandle) override { return SwayWindowNews::listening(); }

private:
    std::optional<SwayWindow> find(WindowHandle window);
    void run(WindowHandle window, const QString &commands);
    void runUntilItIsSo(WindowHandle window, const QString &commands, const QRect &frame);
    void putAway(const SwayWindow &window, PutAway::Manner manner);
    void bringBack(const SwayWindow &window);

    SwaySocket m_socket;
    std::function<QPoint()> m_pointer;
};

} // namespace plum
