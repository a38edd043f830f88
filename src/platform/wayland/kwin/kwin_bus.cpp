#include "platform/wayland/kwin/kwin_bus.h"

#include "platform/linux/message_bus.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 2000; // milliseconds

QDBusConnection connectTo(const QString &address, const QString &name)
{
    if (address.isEmpty() || isSilentBus(address, patience))
        return QDBusConnection(name);
    return QDBusConnection::connectToBus(address, name);
}

QDBusMessage callOf(const KWinObject &object, QLatin1StringView method, const QVariantList &arguments)
{
    QDBusMessage message
        = QDBusMessage::createMethodCall(object.service, object.path, object.interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return message;
}

} // namespace

KWinBus::KWinBus()
    : m_name(u"plum-kwin-%1"_s.arg(quintptr(this)))
    , m_connection(connectTo(sessionBusAddress(), m_name))
{
}

KWinBus::~KWinBus()
{
    QDBusConnection::disconnectFromBus(m_name);
}

QDBusMessage KWinBus::call(const KWinObject &object, QLatin1StringView method, const QVariantList &arguments)
{
    return m_connection.call(callOf(object, method, arguments), QDBus::Block, patience);
}

void KWinBus::tell(const KWinObject &object, QLatin1StringView method, const QVariantList &arguments)
{
    m_connection.send(callOf(object, method, arguments));
}

} // namespace plum
