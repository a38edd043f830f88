#pragma once

#include "platform/desktop_windows.h"
#include "platform/platform.h"

namespace plum {

// Windows that pass everything on to those of another platform; what is about some of the calls derives from
// it.
class WrappedWindows : public Windows
{
public:
    // The port is asked for when it is first used: making it takes time.
    explicit WrappedWindows(Platform &inner)
        : m_inner(inner)
    {
    }

    WindowHandle foreground() override { return windows().foreground(); }
    WindowHandle underPointer() override { return windows().underPointer(); }
    WindowHandle byTitle(const QString &title) override { return windows().byTitle(title); }
    QString title(WindowHandle window) override { return windows().title(window); }
    WindowHandle own(quintptr id) override { return windows().own(id); }
    WindowHandle topLevel(WindowHandle window) override { return windows().topLevel(window); }
    std::vector<WindowHandle> stacking() override { return windows().stacking(); }
    bool isOnScreen(WindowHandle window) override { return windows().isOnScreen(window); }
    QRect rectangle(WindowHandle window) override { return windows().rectangle(window); }
    void close(WindowHandle window) override { windows().close(window); }
    void activate(WindowHandle window) override { windows().activate(window); }
    void hide(WindowHandle window) override { windows().hide(window); }
    void show(WindowHandle window) override { windows().show(window); }
    void minimise(WindowHandle window) override { windows().minimise(window); }
    void maximise(WindowHandle window) override { windows().maximise(window); }
    void moveTo(WindowHandle window, QPoint corner) override { windows().moveTo(window, corner); }
    void bringHere(WindowHandle window) override { windows().bringHere(window); }
    void setTopmost(WindowHandle window) override { windows().setTopmost(window); }
    std::unique_ptr<News> newsOfTitles() override { return windows().newsOfTitles(); }
    std::unique_ptr<News> newsOfEnd(WindowHandle window) override { return windows().newsOfEnd(window); }

private:
    Windows &windows() { return m_inner.windows(); }

    Platform &m_inner;
};

} // namespace plum
