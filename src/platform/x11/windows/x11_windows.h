#pragma once

#include "platform/desktop_windows.h"
#include "platform/x11/windows/window_manager.h"
#include "platform/x11/windows/x11_window_news.h"

namespace plum {

class X11Connection;

// Windows through the window manager, by the Extended Window Manager Hints; without one through the server
// itself. A handle is the window of the program itself, not the frame around it; rectangles and moves are
// those of the frame.
class X11Windows final : public Windows
{
public:
    explicit X11Windows(X11Connection &connection)
        : m_connection(connection)
        , m_facts(connection)
        , m_manager(connection, m_facts)
    {
    }

    WindowHandle foreground() override;
    WindowHandle underPointer() override;
    WindowHandle byTitle(const QString &title) override;
    QString title(WindowHandle window) override;
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
    std::unique_ptr<News> newsOfTitles() override { return X11WindowNews::ofTitles(); }
    std::unique_ptr<News> newsOfEnd(WindowHandle window) override;

private:
    using State = WindowFacts::State;

    void showAgain(xcb_window_t window);
    void spread(xcb_window_t window);
    void place(xcb_window_t window, QPoint corner);
    void raise(xcb_window_t window);

    X11Connection &m_connection;
    WindowFacts m_facts;
    WindowManager m_manager;
};

} // namespace plum
