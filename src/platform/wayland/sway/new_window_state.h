#pragma once

#include "platform/shell.h"
#include "platform/wayland/sway/sway_socket.h"

#include <QObject>

#include <sys/types.h>

namespace plum {

// Waits, from the event loop and for some seconds at most, for the first window of a program that was just
// started, and gives it the show state that it was started with. Deletes itself at the end.
class NewWindowState final : public QObject
{
public:
    // `session` is the one that the program leads: its windows belong to a process of that session.
    NewWindowState(pid_t session, ShowState state, QObject *parent);

private:
    void readEvents();

    pid_t m_session;
    ShowState m_state;
    SwaySocket m_events;
};

} // namespace plum
