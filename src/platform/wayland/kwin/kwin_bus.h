#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

namespace plum {

// Where KWin answers: it has several names on the bus.
struct KWinObject
{
    QString service;
    QString path;
    QLatin1StringView interface;
};

// A connection to the session bus of its own, over which KWin's services are called; closed with this object.
// Without a bus nothing is answered, and one that stays silent counts as none.
class KWinBus
{
public:
    KWinBus();
    ~KWinBus();
    Q_DISABLE_COPY_MOVE(KWinBus)

    QDBusConnection &connection() { return m_connection; }

    // Waits for the answer, for two seconds at most; the user interface does not run meanwhile. A message of
    // another type than ReplyMessage says that there was none.
    QDBusMessage call(const KWinObject &object, QLatin1StringView method, const QVariantList &arguments = {});

    // Does not wait.
    void tell(const KWinObject &object, QLatin1StringView method, const QVariantList &arguments = {});

private:
    QString m_name;
    QDBusConnection m_connection;
};

} // namespace plum
