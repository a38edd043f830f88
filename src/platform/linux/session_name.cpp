#include "platform/linux/session_name.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString nameOnBus()
{
    return QStringLiteral(PLUM_DOMAIN ".Plum");
}

QString objectPath()
{
    return u'/' + nameOnBus().replace(u'.', u'/');
}

QDBusMessage callOfBus(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, method);
    call.setArguments(arguments);
    return call;
}

class SessionName final : public LauncherName, private QDBusVirtualObject
{
public:
    explicit SessionName(const LauncherWishes &wishes)
        : m_wishes(wishes)
        , m_bus(QDBusConnection::sessionBus())
    {
        // The object first: calls come as soon as the name is there.
        m_bus.registerVirtualObject(objectPath(), this);
        constexpr uint doNotQueue = 4;
        m_bus.asyncCall(callOfBus(u"RequestName"_s, {nameOnBus(), doNotQueue}));
    }
    ~SessionName() override
    {
        m_bus.unregisterObject(objectPath());
        m_bus.asyncCall(callOfBus(u"ReleaseName"_s, {nameOnBus()}));
    }
    Q_DISABLE_COPY_MOVE(SessionName)

private:
    QString introspect(const QString &) const override
    {
        return uR"(  <interface name="%1">
    <method name="Show"/>
    <method name="Run"><arg name="keyword" type="s" direction="in"/></method>
    <method name="Install"><arg name="path" type="s" direction="in"/></method>
  </interface>
)"_s.arg(nameOnBus());
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        if (!message.interface().isEmpty() && message.interface() != nameOnBus())
            return false;
        const QString method = message.member() + u'(' + message.signature() + u')';
        const QString object = message.arguments().value(0).toString();
        if (method == "Show()"_L1) {
            // What is wished for may show a box that waits: not inside of the bus's own call.
            QTimer::singleShot(0, this, m_wishes.show);
            bus.send(message.createReply());
        } else if (method == "Run(s)"_L1) {
            answer(message, bus, m_wishes.run(object), u"there is no app \"%1\""_s.arg(object));
        } else if (method == "Install(s)"_L1) {
            answer(message, bus, m_wishes.install(object), u"there is no package %1"_s.arg(object));
        } else {
            return false;
        }
        return true;
    }

    static void answer(
        const QDBusMessage &message, const QDBusConnection &bus, bool isAgreed, const QString &problem)
    {
        bus.send(isAgreed
                ? message.createReply()
                : message.createErrorReply(QDBusError::errorString(QDBusError::InvalidArgs), problem));
    }

    LauncherWishes m_wishes;
    QDBusConnection m_bus;
};

} // namespace

std::unique_ptr<LauncherName> takeSessionName(const QString &programFolder, const LauncherWishes &wishes)
{
    const QString library
        = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/plum"_s;
    const QString own = QFileInfo(programFolder).canonicalFilePath();
    if (own.isEmpty() || own != QFileInfo(library).canonicalFilePath()
        || !QDBusConnection::sessionBus().isConnected())
        return {};
    return std::make_unique<SessionName>(wishes);
}

} // namespace plum
