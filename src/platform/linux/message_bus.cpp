#include "platform/linux/message_bus.h"

#include <QByteArray>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A descriptor that is closed with this object.
class Socket
{
public:
    Socket()
        : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
    }
    ~Socket() { close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(Socket)

    int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

// The socket's name in the form of the system; empty for an address of another kind.
QByteArray socketName(const QString &address)
{
    const QString kind = u"unix:"_s;
    if (!address.startsWith(kind))
        return {};
    for (const QString &pair : address.mid(kind.size()).split(u',')) {
        const QByteArray value = QByteArray::fromPercentEncoding(pair.section(u'=', 1).toLocal8Bit());
        if (pair.startsWith("path="_L1))
            return value;
        if (pair.startsWith("abstract="_L1))
            return '\0' + value;
    }
    return {};
}

bool connectTo(const Socket &socket, const QByteArray &name)
{
    sockaddr_un where{};
    where.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(name.size()) >= sizeof where.sun_path)
        return false;
    std::copy(name.begin(), name.end(), where.sun_path);
    // The name of a file ends in a zero byte, the other kind in its last one.
    const std::size_t end = name.startsWith('\0') ? 0 : 1;
    const auto size = static_cast<socklen_t>(
        offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()) + end);
    return connect(socket.descriptor(), reinterpret_cast<const sockaddr *>(&where), size) == 0
        // Nobody has taken earlier connections; this one would wait behind them.
        || errno == EAGAIN;
}

} // namespace

QString sessionBusAddress()
{
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!address.isEmpty() || folder.isEmpty())
        return address;
    return u"unix:path=%1/bus"_s.arg(folder);
}

QString systemBusAddress()
{
    const QString address = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return address.isEmpty() ? u"unix:path=/var/run/dbus/system_bus_socket"_s : address;
}

bool isSilentBus(const QString &address, int patience)
{
    for (const QString &each : address.split(u';', Qt::SkipEmptyParts)) {
        const QByteArray name = socketName(each);
        if (name.isEmpty())
            return false; // a kind that cannot be tried here
        const Socket socket;
        if (!connectTo(socket, name))
            continue; // the library goes on to the next address too
        // The beginning of a greeting. Whatever a bus thinks of it, it answers.
        constexpr char greeting[] = "\0AUTH\r\n";
        if (send(socket.descriptor(), greeting, sizeof greeting - 1, MSG_NOSIGNAL) < 0)
            return errno == ENOTCONN;
        pollfd answer{socket.descriptor(), POLLIN, 0};
        return poll(&answer, 1, patience) == 0;
    }
    return false;
}

} // namespace plum
