#pragma once

#include "guard/guarded_ports.h"
#include "platform/wrapped_platform.h"

namespace plum {

// A platform whose ports ask the guard before each call. What is refused does nothing and answers like a call
// that failed.
class GuardedPlatform final : public WrappedPlatform
{
public:
    // The guard comes later than the ports: it looks at the run, which is built on them.
    GuardedPlatform(Platform &inner, Guard *const &guard)
        : WrappedPlatform(inner)
        , m_clipboard(inner, guard)
        , m_javaScript(inner, guard)
        , m_keyboard(inner, guard)
        , m_paths(inner, guard)
        , m_pointer(inner, guard)
        , m_screen(inner, guard)
        , m_session(inner, guard)
        , m_windows(inner, guard)
    {
    }

    Clipboard &clipboard() override { return m_clipboard; }
    JavaScript &javaScript() override { return m_javaScript; }
    Keyboard &keyboard() override { return m_keyboard; }
    Paths &paths() override { return m_paths; }
    Pointer &pointer() override { return m_pointer; }
    Screen &screen() override { return m_screen; }
    Session &session() override { return m_session; }
    Windows &windows() override { return m_windows; }

private:
    GuardedClipboard m_clipboard;
    GuardedJavaScript m_javaScript;
    GuardedKeyboard m_keyboard;
    GuardedPaths m_paths;
    GuardedPointer m_pointer;
    GuardedScreen m_screen;
    GuardedSession m_session;
    GuardedWindows m_windows;
};

} // namespace plum
