#pragma once

#include "engine/command_table.h"
#include "platform/desktop_windows.h"

#include <functional>

namespace plum {

// The namespace `window`. Errors are suppressed statement by statement: a field that is no number leaves
// the window handle 0, which is no window, and the command goes on.
class WindowCommands final : public TableHandler<WindowCommands>
{
public:
    explicit WindowCommands(Windows &windows)
        : m_windows(windows)
    {
    }

    static std::span<const Row> table();

    // What `window.get` and `window.set` can be asked for, by the word in their first field.
    struct Selector
    {
        CommandInfo info; // the fields after the selector
        void (WindowCommands::*routine)(const CommandCall &);
    };
    static std::span<const Selector> getSelectors();
    static std::span<const Selector> setSelectors();

private:
    void get(const CommandCall &call);
    void set(const CommandCall &call);
    void select(std::span<const Selector> selectors, const CommandCall &call);

    void getActive(const CommandCall &call);
    void getUnderMouse(const CommandCall &call);
    void getCorner(const CommandCall &call);
    void getLeft(const CommandCall &call);
    void getTop(const CommandCall &call);
    void getRight(const CommandCall &call);
    void getBottom(const CommandCall &call);
    void getWidth(const CommandCall &call);
    void getHeight(const CommandCall &call);

    void close(const CommandCall &call);
    void activate(const CommandCall &call);
    void hide(const CommandCall &call);
    void show(const CommandCall &call);
    void minimise(const CommandCall &call);
    void maximise(const CommandCall &call);
    void move(const CommandCall &call);

    void storeHandle(const CommandCall &call, WindowHandle window);
    void storePart(const CommandCall &call, const std::function<QString(const QRect &)> &part);
    WindowHandle handleField(const CommandCall &call) const;
    WindowHandle presentWindow(const CommandCall &call) const;

    Windows &m_windows;
};

} // namespace plum
