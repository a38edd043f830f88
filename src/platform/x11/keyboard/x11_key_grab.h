#pragma once

#include "platform/x11/connection/x11_connection.h"

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace plum {

// One key of the whole desktop, taken from it with some modifiers. When it is pressed the server keeps back
// everything typed from then on, until the keyboard has gone where it is wanted; then all of it goes there in
// its order, as if it had been typed just now. No key can slip past, however soon it follows.
//
// A keyboard that is kept back must never depend on a user interface that may be busy, so this has a
// connection and a thread of its own, and lets the keys go on after a while whatever happens. A process that
// is stopped has no threads that run; for that there is a guard, a small process that then ends the
// connection.
class X11KeyGrab
{
public:
    // Both are called in the thread: `pressed` once a press, however long the key is held; `lost` when the
    // connection has been ended, after which this is of no use any more.
    X11KeyGrab(std::function<void(xcb_timestamp_t time)> pressed, std::function<void()> lost);
    ~X11KeyGrab();
    Q_DISABLE_COPY_MOVE(X11KeyGrab)

    bool isOpen() const { return m_connection.isOpen(); }

    // Starts the guard, once. Without it everything else is the same.
    void startGuard();

    // All of `modifiers` or none: returns false when another program holds one of the combinations.
    bool take(xcb_keycode_t key, const std::vector<uint16_t> &modifiers);
    void letGo();

    // After a press: the keys go on when a window of the program that has `window` has the keyboard.
    void giveKeysTo(xcb_window_t window);

    // After a press: the keys go on when the keyboard has left `window` for another one.
    void takeKeysFrom(xcb_window_t window);

    // After a press: the keys go on at once.
    void passKeysOn();

private:
    using Clock = std::chrono::steady_clock;

    enum class Phase {
        Waiting, // for the key
        KeepingBack, // the key is down, and what follows stays in the server
        Following, // the keys go on, and the key has not come up yet
    };

    // What has to become of the keyboard before the keys go on.
    struct Wish
    {
        xcb_window_t window = XCB_NONE;
        bool isToHaveIt = false;
    };

    void run();
    void receive(const xcb_generic_event_t &event);
    std::optional<std::chrono::milliseconds> advance();
    bool isOfManager(xcb_window_t window);
    bool sameProgram(xcb_window_t one, xcb_window_t other) const;
    bool isFulfilled(const Wish &wish);
    void allow(xcb_allow_t mode, xcb_timestamp_t time);
    void wish(const Wish &wish, Clock::duration patience);
    void dropKey();
    void tellGuard(char word);
    void wake();

    X11Connection m_connection;
    std::function<void(xcb_timestamp_t time)> m_pressed;
    std::function<void()> m_lost;
    int m_wake = -1; // a counter that ends the thread's sleep

    std::mutex m_mutex; // for all that follows
    xcb_keycode_t m_key = 0; // 0 for none
    std::vector<uint16_t> m_modifiers;
    Phase m_phase = Phase::Waiting;
    xcb_timestamp_t m_pressTime = 0;
    Clock::time_point m_deadline;
    std::optional<Wish> m_wish;
    int m_guard = -1; // a socket whose other end is the guard's
    char m_told = 0; // to the guard, the last word
    Clock::time_point m_toldWhen;
    bool m_ends = false;

    std::thread m_thread;
};

} // namespace plum
