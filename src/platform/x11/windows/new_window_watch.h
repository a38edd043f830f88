#pragma once

#include "platform/shell.h"

#include <QDeadlineTimer>
#include <QObject>

#include <memory>
#include <sys/types.h>
#include <vector>
#include <xcb/xcb.h>

class QSocketNotifier;

namespace plum {

class X11Connection;

// Waits, from the event loop and for some seconds at most, for the first window of a program that was just
// started, and gives it the show state that it was started with. Deletes itself when there is nothing left
// to wait for. The connection is its own, since it watches the root window in its own way.
class NewWindowWatch final : public QObject
{
    Q_OBJECT

public:
    // `session` is the one that the program leads: its windows belong to a process of that session.
    NewWindowWatch(pid_t session, ShowState state, QObject *parent);
    ~NewWindowWatch() override;

    // Waits for the window without an event loop: the process is about to end.
    void finishBefore(const QDeadlineTimer &deadline);

private:
    void look();
    std::vector<quint32> numbers(xcb_window_t window, const char *property);
    bool belongsToSession(xcb_window_t window);
    xcb_window_t find();
    void apply(xcb_window_t window);
    void tellRoot(xcb_window_t window, const char *message, std::vector<quint32> data);

    pid_t m_session;
    ShowState m_state;
    std::unique_ptr<X11Connection> m_connection;
    QSocketNotifier *m_events = nullptr;
    bool m_isDone = false;
    bool m_changed = false; // something happened to the root window
};

} // namespace plum
