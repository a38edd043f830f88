#pragma once

#include "platform/hand_watch.h"
#include "platform/launcher_name.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QCoreApplication;

namespace plum {

class Autostart;
class Clipboard;
class GlobalHotkey;
class JavaScript;
class Keyboard;
class Paths;
class Pointer;
class Screen;
class Session;
class Shell;
class TextCodec;
class WaitableTimers;
class Windows;

// All ports of one system. Each is made when it is first asked for and lives as long as this object.
class Platform
{
public:
    virtual ~Platform() = default;

    virtual Autostart &autostart() = 0;
    virtual Clipboard &clipboard() = 0;
    virtual GlobalHotkey &hotkey() = 0;
    virtual JavaScript &javaScript() = 0;
    virtual Keyboard &keyboard() = 0;
    virtual Paths &paths() = 0;
    virtual Pointer &pointer() = 0;
    virtual Screen &screen() = 0;
    virtual Session &session() = 0;
    virtual Shell &shell() = 0;
    virtual TextCodec &textCodec() = 0;
    virtual WaitableTimers &timers() = 0;
    virtual Windows &windows() = 0;

    // Calls `end` from the event loop when the system asks this process to end (a termination signal, the
    // end of the session).
    virtual void onEndRequested(std::function<void()> end) = 0;

    // Calls `heard` in place of that when the user interrupts the process from the terminal that it was
    // started in, as far as the system tells this apart.
    virtual void onInterrupted(std::function<void()>) { }

    // Looks for what stops a run at the user's keyboard, as long as the result lives. Null where the system
    // does not tell the user's keys from those of programs, or there is no desktop.
    virtual std::unique_ptr<HandWatch> watchHand(const HandSigns &) { return nullptr; }

    // Calls `then` once the desktop's tray is known not to hang, or once it is known that there is none:
    // making a tray icon waits for it.
    virtual void whenTrayAnswers(std::function<void()> then) = 0;

    // Takes the name by which other programs of the session ask for the launcher of the user's own library.
    // Null for every other library, and where programs do not ask each other in this way.
    virtual std::unique_ptr<LauncherName> takeLauncherName(const LauncherWishes &) { return {}; }

    // Whether the system has a registry of components, which its program `regsvr32` writes.
    virtual bool registersComponents() const = 0;

    // Gives back what this process holds of the desktop: pressed keys and buttons are released, clipboard
    // text is handed on. Called once, right before the process ends in any orderly way.
    virtual void releaseDesktop() = 0;
};

// What must be settled before the application object exists.
struct StartEnvironment
{
    bool hasDesktop = true;
    QString notice; // something the user should know about the desktop, in one line; usually empty
};

// Makes what the process prints reach the console that it was started from, where that does not happen by
// itself. Called first of all.
void prepareStandardStreams();

// Files by their numbers, over which a process talks to the one that has started it.
struct TalkFiles
{
    int input = 0;
    int output = 1;
};

// Keeps standard input and output for a talk of bytes. What the process prints from now on goes to standard
// error, and programs that it starts have no part in the talk.
TalkFiles takeStandardStreams();

// Chooses the system's way to the display (Qt reads it when the application object is made).
// `needsDesktop` is false for a script start, which can do without one.
StartEnvironment prepareEnvironment(bool needsDesktop);

// The command line after the program's name as one text, in the system's own way.
QString commandLine(int argc, char **argv);

std::unique_ptr<Platform> createPlatform(const QString &programPath);

} // namespace plum
