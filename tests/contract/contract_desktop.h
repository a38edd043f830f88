#pragma once

#include "platform/desktop_windows.h"
#include "platform/platform.h"

#include <QRect>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <span>

namespace plum::contract {

// A window of another program, as that program knows it. Its inside is painted with the colours below, and
// the keyboard and the mouse reach it. The program ends with this object.
class PeerWindow
{
public:
    static constexpr quint32 background = 0x336699;
    static constexpr quint32 topLeftCorner = 0xff0102;
    static constexpr quint32 bottomRightCorner = 0x03fe04;
    static constexpr int cornerSize = 40; // pixels, of either square

    virtual ~PeerWindow() = default;

    virtual WindowHandle handle() = 0;
    virtual QRect frame() = 0;
    virtual QRect inside() = 0;

    // What the program has seen since the last forget(), only what begins with one of `words`:
    //   key down|up CODE MODIFIERS [TEXT]   CODE is a Qt::Key, hexadecimal; MODIFIERS 2 shift, 4 control, 8
    //   alt button down|up 1|3 X Y              and "double click 1|3 X Y" focus in, focus out, minimised,
    //   maximised, normal, close
    virtual QStringList seen(const QStringList &words) = 0;
    virtual void forget() = 0;

    // The program ends at once, without a word to its window.
    virtual void kill() = 0;

    // A program that hangs, which the key H brings about, goes on.
    virtual void goOn() = 0;
};

// A task of another program that uses the ports as well, or Qt in their place.
class PeerProgram
{
public:
    virtual ~PeerProgram() = default;

    // What the program has said about `word`, its last word; a null text before it has.
    virtual QString answer(const QString &word) = 0;
    virtual bool hasEnded() = 0;
};

// A sentence of the contract that does not hold somewhere.
struct Exception
{
    // A test's full name, or the beginning of several ones followed by "*".
    const char *test;
    // A row of docs/platforms.md holds it word for word.
    const char *reason;
};

// What the contract's tests need to know of a backend. Each backend implements `create`.
class Desktop
{
public:
    static std::unique_ptr<Desktop> create();

    virtual ~Desktop() = default;

    // The name of the backend as docs/platforms.md has it.
    virtual const char *name() const = 0;

    // Called before the application object is made. False when there is no desktop to work on.
    virtual bool prepare() = 0;

    virtual std::unique_ptr<Platform> createPlatform() = 0;

    // Opens a window whose inside is `inside` as far as the window manager lets it be, and waits until it is
    // shown and has the keyboard. Null when that does not come about.
    virtual std::unique_ptr<PeerWindow> openWindow(
        Platform &platform, const QString &title, const QRect &inside)
        = 0;

    // Starts the peer program for a task (see peer/main.cpp).
    virtual std::unique_ptr<PeerProgram> start(const QStringList &task) = 0;

    virtual std::span<const Exception> exceptions() const = 0;
};

} // namespace plum::contract
