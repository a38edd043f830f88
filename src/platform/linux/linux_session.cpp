#include "platform/linux/linux_session.h"

#include "platform/linux/message_bus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>

#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

using Outcome = Session::Outcome;

// All calls of one command together.
constexpr int answerTime = 1800; // milliseconds

struct Service
{
    QLatin1StringView name;
    QLatin1StringView path;
    QLatin1StringView interface;
};

constexpr Service loginManager{
    "org.freedesktop.login1"_L1, "/org/freedesktop/login1"_L1, "org.freedesktop.login1.Manager"_L1};

// Screen lockers of the desktops, the common interface first.
constexpr std::array screenSavers{
    Service{"org.freedesktop.ScreenSaver"_L1, "/ScreenSaver"_L1, "org.freedesktop.ScreenSaver"_L1},
    Service{"org.freedesktop.ScreenSaver"_L1, "/org/freedesktop/ScreenSaver"_L1,
        "org.freedesktop.ScreenSaver"_L1},
    Service{"org.gnome.ScreenSaver"_L1, "/org/gnome/ScreenSaver"_L1, "org.gnome.ScreenSaver"_L1},
    Service{"org.cinnamon.ScreenSaver"_L1, "/org/cinnamon/ScreenSaver"_L1, "org.cinnamon.ScreenSaver"_L1},
    Service{"org.mate.ScreenSaver"_L1, "/org/mate/ScreenSaver"_L1, "org.mate.ScreenSaver"_L1},
    Service{"org.xfce.ScreenSaver"_L1, "/org/xfce/ScreenSaver"_L1, "org.xfce.ScreenSaver"_L1},
};

// A connection of its own to a bus, closed with this object.
class Bus
{
public:
    // Connects unless the bus stays silent until `deadline`.
    Bus(const QString &address, const QDeadlineTimer &deadline)
        : m_name(u"plum-session-%1"_s.arg(quintptr(this)))
        , m_connection(address.isEmpty() || isSilentBus(address, static_cast<int>(deadline.remainingTime()))
                  ? QDBusConnection(m_name)
                  : QDBusConnection::connectToBus(address, m_name))
    {
    }
    ~Bus() { QDBusConnection::disconnectFromBus(m_name); }
    Q_DISABLE_COPY_MOVE(Bus)

    // Whether the service took the call. Waits for its answer until `deadline`.
    bool call(const Service &service, QLatin1StringView method, const QVariantList &arguments,
        const QDeadlineTimer &deadline)
    {
        if (!m_connection.isConnected() || deadline.hasExpired())
            return false;
        QDBusMessage message
            = QDBusMessage::createMethodCall(service.name, service.path, service.interface, method);
        message.setArguments(arguments);
        const QDBusMessage answer
            = m_connection.call(message, QDBus::Block, static_cast<int>(deadline.remainingTime()));
        return answer.type() == QDBusMessage::ReplyMessage;
    }

private:
    QString m_name;
    QDBusConnection m_connection;
};

// The login manager's name for this process's own session.
QString sessionId()
{
    return qEnvironmentVariable("XDG_SESSION_ID", u"auto"_s);
}

Outcome askLoginManager(QLatin1StringView method, const QVariant &argument, const QDeadlineTimer &deadline)
{
    Bus system(systemBusAddress(), deadline);
    return system.call(loginManager, method, {argument}, deadline) ? Outcome::Done : Outcome::Unavailable;
}

} // namespace

Outcome LinuxSession::lockScreen()
{
    // A screen saver that does not answer leaves time for the login manager.
    const QDeadlineTimer half(answerTime / 2);
    const QDeadlineTimer deadline(answerTime);
    Bus session(sessionBusAddress(), half);
    for (const Service &saver : screenSavers) {
        if (session.call(saver, "Lock"_L1, {}, half))
            return Outcome::Done;
    }
    return askLoginManager("LockSession"_L1, sessionId(), deadline);
}

// Ends the session's processes without asking them.
Outcome LinuxSession::logOff()
{
    return askLoginManager("TerminateSession"_L1, sessionId(), QDeadlineTimer(answerTime));
}

// The argument of these two: no question to the user.
Outcome LinuxSession::shutDown()
{
    return askLoginManager("PowerOff"_L1, false, QDeadlineTimer(answerTime));
}

Outcome LinuxSession::restart()
{
    return askLoginManager("Reboot"_L1, false, QDeadlineTimer(answerTime));
}

} // namespace plum
