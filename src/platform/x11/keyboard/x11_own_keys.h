#pragma once

#include "platform/x11/keyboard/x11_receiver.h"

#include <QtGlobal>

#include <array>
#include <deque>
#include <optional>
#include <span>
#include <vector>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

namespace plum {

class StopSignal;
class X11Connection;

// Keys that the layout does not use, with symbols of ours for as long as they are needed. Each change of the
// map makes every program read it anew, so many keys change at once. Programs do that some time after an
// event that needed it; therefore a key gets another symbol only when whoever has the keyboard has worked off
// what was typed with it.
class X11OwnKeys
{
public:
    // Where a symbol is.
    struct Place
    {
        xcb_keycode_t key;
        bool withShift;
        bool isLetter; // of two cases, which Caps Lock swaps
    };

    explicit X11OwnKeys(X11Connection &connection);

    bool has(xcb_keycode_t key) const;

    // Nothing for a symbol without a place.
    std::optional<Place> placeOf(xkb_keysym_t symbol) const;

    // Gives places to `symbols`, from the first one on, to as many as there is room for with one change of
    // the map. Both cases of a letter get one key, other symbols share it in pairs. `unused` are the keys
    // without a symbol.
    void give(std::span<const xkb_keysym_t> symbols, std::span<const xcb_keycode_t> unused);

    // A key that gives `symbol` without Shift, and keeps it until it is let go; nothing when there is no
    // room.
    std::optional<xcb_keycode_t> hold(xkb_keysym_t symbol, std::span<const xcb_keycode_t> unused);
    void letGo(xcb_keycode_t key);

    // Takes every key back.
    void takeBack();

    // What ends the waits for receivers: give() and hold() are left with RunStopped, takeBack() goes on soon.
    void setStop(const StopSignal *stop) { m_stop = stop; }

    // The layout has changed: those that `keymap` does not have are no longer ours.
    void follow(xkb_keymap &keymap);

    // The change of the map that the server is telling of was made here.
    bool made(const xcb_generic_event_t &change) const;

private:
    struct OwnKey
    {
        xcb_keycode_t key;
        std::array<xkb_keysym_t, 2> symbols; // without and with Shift; the second one may be missing
        bool held;
        qint64 lastUse; // milliseconds of the monotonic clock
    };

    OwnKey *ownKeyWith(xkb_keysym_t symbol);
    bool makeRoom(size_t count, std::optional<qint64> use, std::span<const xcb_keycode_t> unused,
        std::vector<xcb_keycode_t> &free);
    qint64 nextUse();
    void waitUntilSettled(qint64 lastUse, qint64 graceAtStop);
    void write(std::span<const OwnKey> changed);

    X11Connection &m_connection;
    X11Receiver m_receiver;
    const StopSignal *m_stop = nullptr;
    qint64 m_latestUse = 0;
    qint64 m_settledUntil = 0; // every use before is known to be over
    std::deque<OwnKey> m_keys;
    std::optional<quint16> m_change; // the number of the request whose events are on their way
};

} // namespace plum
