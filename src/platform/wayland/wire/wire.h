#pragma once

namespace plum {

class Clipboard;
class GlobalHotkey;
class Keyboard;
class Pointer;
class Screen;
class Session;
class Shell;
class Windows;

// The way to one family of compositors: the ports that each of them wants to be driven by in a way of its
// own. A port is made when it is first asked for; what the compositor does not offer does nothing.
class Wire
{
public:
    virtual ~Wire() = default;

    virtual Clipboard &clipboard() = 0;
    virtual GlobalHotkey &hotkey() = 0;
    virtual Keyboard &keyboard() = 0;
    virtual Pointer &pointer() = 0;
    virtual Screen &screen() = 0;
    virtual Session &session() = 0;
    virtual Shell &shell() = 0;
    virtual Windows &windows() = 0;

    // Called once when the process is about to end: lets go of everything that is held on the desktop.
    virtual void releaseDesktop() = 0;
};

} // namespace plum
