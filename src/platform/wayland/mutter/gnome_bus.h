#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantList>

namespace plum {

// An object on the session bus, as one interface of it.
struct BusObject
{
    QString service;
    QString path;
    QString interface;
};

// A connection to the session bus that all ports of GNOME share: what they send keeps its order, and no wait
// for an answer lets the user interface run. Without a bus every call fails.
class GnomeBus
{
public:
    GnomeBus();
    ~GnomeBus();
    Q_DISABLE_COPY_MOVE(GnomeBus)

    // The answer; an error where there is none within `milliseconds`. No service is started for it.
    QDBusMessage call(const BusObject &object, const QString &method, const QVariantList &arguments = {},
        int milliseconds = usualPatience);

    // Whether the call was taken.
    bool succeeds(const BusObject &object, const QString &method, const QVariantList &arguments = {})
    {
        return call(object, method, arguments).type() == QDBusMessage::ReplyMessage;
    }

    // Calls the receiver's slot, which takes the signal's arguments, in the receiver's thread.
    void listen(const BusObject &object, const QString &signal, QObject *receiver, const char *slot);

    QDBusConnection &connection() { return m_connection; }

private:
    // Milliseconds; a shell that is busy must not look like one without windows.
    static constexpr int usualPatience = 10'000;

    QString m_name;
    QDBusConnection m_connection;
};

} // namespace plum
