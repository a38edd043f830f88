#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <sys/types.h>

namespace plum {

// What startDetached() starts.
struct DetachedProcess
{
    QString program; // the file itself; PATH is not searched
    QList<QByteArray> arguments; // without the program's own name
    int standardInput = -1; // descriptors the process gets; -1 for one that leads nowhere
    int standardOutput = -1;
};

struct DetachedStart
{
    pid_t process = 0; // also the number of the session that the process leads; 0 when nothing was started
    int error = 0; // the errno of a start that failed

    explicit operator bool() const { return process != 0; }
};

// Starts a process that has nothing of this one but the environment and the working folder: it leads a
// session of its own, is no child (so that it leaves no zombie), holds no other descriptor, and has every
// signal unblocked and at its default.
DetachedStart startDetached(const DetachedProcess &process);

// The path of another program of Plum, which lies beside this one, wherever a symbolic link to this one lies.
QString programBeside(const QString &name);

} // namespace plum
