#pragma once

#include "platform/desktop_windows.h"

namespace plum {

// Top-level windows through user32. Changes are asked for without waiting for the window's program, which may
// hang, and then watched until they can be seen.
class Win32Windows final : public Windows
{
public:
    WindowHandle foreground() override;
    WindowHandle underPointer() override;
    WindowHandle topLevel(WindowHandle window) override;
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
    std::unique_ptr<News> newsOfTitles() override;
    // The end of a program that was killed need not be told.
    std::unique_ptr<News> newsOfEnd(WindowHandle) override { return nullptr; }
};

} // namespace plum
