#pragma once

#include <QtGlobal>

#include <functional>
#include <xcb/xcb.h>

namespace plum {

class X11Connection;

// The program that has the keyboard, asked whether it has worked off what was sent to it. Window managers ask
// so for programs that hang (_NET_WM_PING); the answer comes in the order of the events before the question.
class X11Receiver
{
public:
    explicit X11Receiver(X11Connection &connection);

    // Waits for the answer, for `milliseconds` at most, or until `isGivenUp`, which is asked all the time.
    // False without one, and at once where nobody has the keyboard or the program knows no such question.
    bool hasWorkedOff(
        int milliseconds, const std::function<bool()> &isGivenUp = [] { return false; });

private:
    void receive(const xcb_generic_event_t &event);
    xcb_window_t askableWindow();
    bool knowsTheQuestion(xcb_window_t window);

    X11Connection &m_connection;
    quint32 m_asked = 0; // counts the questions
    quint32 m_answered = 0; // the last one with an answer
};

} // namespace plum
