#include "platform/linux/message_bus.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/x11_session.h"
#include "support/x_server.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QMutex>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;
using Outcome = Session::Outcome;

namespace {

// A message bus for one test. Both bus addresses of the process point to private buses or to nothing, so
// that no call can reach the machine's own services.
class PrivateBus
{
public:
    PrivateBus()
    {
        m_daemon.start(u"dbus-daemon"_s,
            {u"--session"_s, u"--nofork"_s, u"--print-address"_s,
                u"--address=unix:dir="_s + m_folder.path()});
        if (m_daemon.waitForReadyRead(60'000))
            m_address = m_daemon.readLine().trimmed();
    }
    ~PrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    QByteArray address() const { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QByteArray m_address;
};

enum class Manner {
    Answers,
    Refuses,
    NeverAnswers,
};

// Stands for the services behind one object path: writes every call down.
class Stub final : public QDBusVirtualObject
{
public:
    explicit Stub(Manner manner)
        : m_manner(manner)
    {
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        QStringList arguments;
        for (const QVariant &argument : message.arguments())
            arguments += argument.toString();
        {
            const QMutexLocker lock(&m_mutex);
            m_calls += u"%1 %2.%3(%4)"_s.arg(
                message.path(), message.interface(), message.member(), arguments.join(u","_s));
        }
        if (m_manner == Manner::Answers)
            connection.send(message.createReply());
        else if (m_manner == Manner::Refuses)
            connection.send(message.createErrorReply(QDBusError::AccessDenied, u"no"_s));
        return true;
    }

    QStringList calls()
    {
        const QMutexLocker lock(&m_mutex);
        return m_calls;
    }

private:
    Manner m_manner;
    QMutex m_mutex;
    QStringList m_calls;
};

// A service on a private bus, in a thread of its own since the calls under test block.
class Service
{
public:
    Service(const PrivateBus &bus, const QString &name, Manner manner)
        : m_stub(std::make_unique<Stub>(manner))
        , m_name(u"stub-%1"_s.arg(quintptr(this)))
    {
        m_stub->moveToThread(&m_thread);
        m_thread.start();
        QMetaObject::invokeMethod(
            m_stub.get(),
            [&] {
                QDBusConnection connection
                    = QDBusConnection::connectToBus(QString::fromLatin1(bus.address()), m_name);
                EXPECT_TRUE(connection.isConnected());
                EXPECT_TRUE(connection.registerVirtualObject(u"/"_s, m_stub.get(), QDBusConnection::SubPath));
                EXPECT_TRUE(connection.registerService(name));
            },
            Qt::BlockingQueuedConnection);
    }
    ~Service()
    {
        QMetaObject::invokeMethod(
            m_stub.get(), [&] { QDBusConnection::disconnectFromBus(m_name); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }
    Q_DISABLE_COPY_MOVE(Service)

    QStringList calls() const { return m_stub->calls(); }

private:
    QThread m_thread;
    std::unique_ptr<Stub> m_stub;
    QString m_name;
};

// Takes connections and never says a word, as a bus whose process is stopped.
class SilentBus
{
public:
    explicit SilentBus(int waitingConnections = 10)
        : m_listener(socket(AF_UNIX, SOCK_STREAM, 0))
        , m_waiting(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        const QByteArray path = this->path().toLocal8Bit();
        sockaddr_un where{};
        where.sun_family = AF_UNIX;
        std::copy(path.begin(), path.end(), where.sun_path);
        const auto *name = reinterpret_cast<const sockaddr *>(&where);
        EXPECT_EQ(bind(m_listener, name, sizeof where), 0);
        EXPECT_EQ(listen(m_listener, waitingConnections), 0);
        EXPECT_EQ(connect(m_waiting, name, sizeof where), 0);
    }
    ~SilentBus()
    {
        close(m_waiting);
        close(m_listener);
    }
    Q_DISABLE_COPY_MOVE(SilentBus)

    QByteArray address() const { return "unix:path=" + path().toLocal8Bit(); }

private:
    QString path() const { return m_folder.filePath(u"bus"_s); }

    QTemporaryDir m_folder;
    int m_listener;
    int m_waiting;
};

const QString loginManager = u"org.freedesktop.login1"_s;
const QString screenSaver = u"org.freedesktop.ScreenSaver"_s;
const QString lockedByManager = u"/org/freedesktop/login1 org.freedesktop.login1.Manager.LockSession(c7)"_s;

class SessionTest : public testing::Test
{
protected:
    SessionTest()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", sessionBus.address());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", systemBus.address());
        qputenv("XDG_SESSION_ID", "c7");
    }
    ~SessionTest() override { leaveNoBus(); }

    void SetUp() override
    {
        ASSERT_FALSE(sessionBus.address().isEmpty());
        ASSERT_FALSE(systemBus.address().isEmpty());
        elapsed.start();
    }

    // Addresses at which nothing listens, also for what comes after this test.
    static void leaveNoBus()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/session");
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/system");
    }

    int m_argumentCount = 1;
    char m_programName[10] = "x11_tests";
    char *m_arguments[2] = {m_programName, nullptr};
    QCoreApplication application{m_argumentCount, m_arguments};

    PrivateBus sessionBus;
    PrivateBus systemBus;
    XServer server{{320, 200}};
    X11Connection connection;
    X11Session session{connection};
    QElapsedTimer elapsed;
};

} // namespace

TEST_F(SessionTest, LocksThroughTheScreenSaver)
{
    const Service saver(sessionBus, screenSaver, Manner::Answers);
    const Service manager(systemBus, loginManager, Manner::Answers);
    EXPECT_EQ(session.lockScreen(), Outcome::Done);
    EXPECT_EQ(saver.calls(), QStringList(u"/ScreenSaver org.freedesktop.ScreenSaver.Lock()"_s));
    EXPECT_EQ(manager.calls(), QStringList());
}

TEST_F(SessionTest, LocksThroughTheLoginManagerWithoutAScreenSaver)
{
    const Service manager(systemBus, loginManager, Manner::Answers);
    EXPECT_EQ(session.lockScreen(), Outcome::Done);
    EXPECT_EQ(manager.calls(), QStringList(lockedByManager));
}

TEST_F(SessionTest, LocksThroughTheLoginManagerWhenTheScreenSaverRefuses)
{
    const Service saver(sessionBus, screenSaver, Manner::Refuses);
    const Service manager(systemBus, loginManager, Manner::Answers);
    EXPECT_EQ(session.lockScreen(), Outcome::Done);
    EXPECT_EQ(manager.calls(), QStringList(lockedByManager));
}

TEST_F(SessionTest, LocksThroughTheLoginManagerWhenTheScreenSaverNeverAnswers)
{
    const Service saver(sessionBus, screenSaver, Manner::NeverAnswers);
    const Service manager(systemBus, loginManager, Manner::Answers);
    EXPECT_EQ(session.lockScreen(), Outcome::Done);
    EXPECT_EQ(manager.calls(), QStringList(lockedByManager));
}

TEST_F(SessionTest, EndsTheSessionAndTheMachineWithoutAsking)
{
    const Service manager(systemBus, loginManager, Manner::Answers);
    EXPECT_EQ(session.logOff(), Outcome::Done);
    EXPECT_EQ(session.shutDown(), Outcome::Done);
    EXPECT_EQ(session.restart(), Outcome::Done);
    EXPECT_EQ(manager.calls(),
        (QStringList{u"/org/freedesktop/login1 org.freedesktop.login1.Manager.TerminateSession(c7)"_s,
            u"/org/freedesktop/login1 org.freedesktop.login1.Manager.PowerOff(false)"_s,
            u"/org/freedesktop/login1 org.freedesktop.login1.Manager.Reboot(false)"_s}));
}

TEST_F(SessionTest, ARefusalIsUnavailable)
{
    const Service manager(systemBus, loginManager, Manner::Refuses);
    EXPECT_EQ(session.shutDown(), Outcome::Unavailable);
    EXPECT_EQ(manager.calls().size(), 1);
}

TEST_F(SessionTest, ServicesThatNeverAnswerCostTwoSecondsAtMost)
{
    const Service saver(sessionBus, screenSaver, Manner::NeverAnswers);
    const Service manager(systemBus, loginManager, Manner::NeverAnswers);
    elapsed.start();
    EXPECT_EQ(session.lockScreen(), Outcome::Unavailable);
    const qint64 lock = elapsed.restart();
    EXPECT_EQ(session.restart(), Outcome::Unavailable);
    const qint64 restart = elapsed.elapsed();
    EXPECT_FALSE(saver.calls().isEmpty());
    EXPECT_EQ(manager.calls().size(), 2);
    // Qt's own patience would be 25 seconds; the rest is for a loaded machine.
    EXPECT_LT(lock, 10'000);
    EXPECT_LT(restart, 10'000);
}

TEST_F(SessionTest, BusesThatStaySilentCostTwoSecondsAtMost)
{
    // One takes the connection, the other cannot even do that.
    for (const int waitingConnections : {10, 0}) {
        const SilentBus silent(waitingConnections);
        qputenv("DBUS_SESSION_BUS_ADDRESS", silent.address());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", silent.address());
        elapsed.start();
        EXPECT_EQ(session.lockScreen(), Outcome::Unavailable);
        EXPECT_LT(elapsed.restart(), 10'000);
        EXPECT_EQ(session.shutDown(), Outcome::Unavailable);
        EXPECT_LT(elapsed.elapsed(), 10'000);
    }
}

TEST_F(SessionTest, LocksThroughTheLoginManagerWhenTheSessionBusStaysSilent)
{
    const SilentBus silent;
    qputenv("DBUS_SESSION_BUS_ADDRESS", silent.address());
    const Service manager(systemBus, loginManager, Manner::Answers);
    EXPECT_EQ(session.lockScreen(), Outcome::Done);
    EXPECT_EQ(manager.calls(), QStringList(lockedByManager));
}

TEST_F(SessionTest, OnlyABusThatHangsIsSilent)
{
    constexpr int shortTime = 200; // milliseconds; for those that answer it is never used up
    constexpr int longTime = 60'000;
    const SilentBus silent;
    const QString hanging = QString::fromLatin1(silent.address());
    const QString living = QString::fromLatin1(sessionBus.address());
    EXPECT_TRUE(isSilentBus(hanging, shortTime));
    EXPECT_TRUE(isSilentBus(hanging + u",guid=0123;"_s + living, shortTime));
    EXPECT_TRUE(isSilentBus(u"unix:path=/nonexistent;"_s + hanging, shortTime));
    EXPECT_FALSE(isSilentBus(living, longTime));
    for (const QString &none : {QString(), u"unix:path=/nonexistent"_s, u"autolaunch:"_s, u"unix:"_s,
             u"unix:path="_s + QString(200, u'x'), u"unix:abstract=plum-no-such-bus"_s})
        EXPECT_FALSE(isSilentBus(none, longTime)) << none.toStdString();
}

TEST_F(SessionTest, WithoutServicesEverythingIsUnavailable)
{
    EXPECT_EQ(session.lockScreen(), Outcome::Unavailable);
    EXPECT_EQ(session.logOff(), Outcome::Unavailable);
    EXPECT_EQ(session.shutDown(), Outcome::Unavailable);
    EXPECT_EQ(session.restart(), Outcome::Unavailable);
}

TEST_F(SessionTest, WithoutBusesEverythingIsUnavailable)
{
    leaveNoBus();
    EXPECT_EQ(session.lockScreen(), Outcome::Unavailable);
    EXPECT_EQ(session.shutDown(), Outcome::Unavailable);
}

TEST_F(SessionTest, StartsNoBusWhereNoneIsNamed)
{
    QTemporaryDir runtime;
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    const Service manager(systemBus, loginManager, Manner::Answers);
    EXPECT_EQ(session.lockScreen(), Outcome::Done);
    EXPECT_EQ(manager.calls(), QStringList(lockedByManager));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"));
}

// A virtual server has no power control; it is the answer for a server without it that is seen here.
TEST_F(SessionTest, MonitorWithoutPowerControlIsUnavailable)
{
    ASSERT_TRUE(server.isReady());
    server.useAsDisplay();
    X11Connection open;
    ASSERT_TRUE(open.isOpen());
    EXPECT_EQ(X11Session(open).monitorOff(), Outcome::Unavailable);
    EXPECT_TRUE(open.isOpen());
}

} // namespace plum
