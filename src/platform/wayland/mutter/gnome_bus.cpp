#include "platform/wayland/mutter/gnome_bus.h"

#include "platform/linux/message_bus.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QDBusConnection connect(const QString &name)
{
    constexpr int patience = 10'000; // milliseconds
    const QString address = sessionBusAddress();
    if (address.isEmpty() || isSilentBus(address, patience))
        return QDBusConnection(name);
    return QDBusConnection::connectToBus(address, name);
}

} // namespace

GnomeBus::GnomeBus()
    : m_name(u"plum-gnome-%1"_s.arg(quintptr(this)))
    , m_connection(connect(m_name))
{
}

GnomeBus::~GnomeBus()
{
    QDBusConnection::disconnectFromBus(m_name);
}

QDBusMessage GnomeBus::call(
    const BusObject &object, const QString &method, const QVariantList &arguments, int milliseconds)
{
    QDBusMessage message
        = QDBusMessage::createMethodCall(object.service, object.path, object.interface, method);
    if (!m_connection.isConnected())
        return message.createErrorReply(QDBusError::Disconnected, {});
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return m_connection.call(message, QDBus::Block, milliseconds);
}

void GnomeBus::listen(const BusObject &object, const QString &signal, QObject *receiver, const char *slot)
{
    m_connection.connect({}, object.path, object.interface, signal, receiver, slot);
}

} // namespace plum
