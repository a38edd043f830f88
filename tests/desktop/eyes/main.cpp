#include "desktop/eyes/snapshot.h"

#include <QGenericPlugin>
#include <QLocalServer>
#include <QLocalSocket>

// Eyes for a test inside a program that does not know it is tested: a plugin of Qt, loaded by
// QT_QPA_GENERIC_PLUGINS, that answers each line on the local socket PLUM_EYES with what the program shows.
// It never touches anything.

namespace plum::eyes {

class Eyes final : public QObject
{
public:
    explicit Eyes(const QString &socket)
    {
        connect(&m_server, &QLocalServer::newConnection, this, [this] {
            QLocalSocket *asking = m_server.nextPendingConnection();
            connect(asking, &QLocalSocket::readyRead, asking, [asking] {
                while (asking->canReadLine()) {
                    asking->readLine();
                    asking->write(snapshot() + '\n');
                }
            });
        });
        if (!m_server.listen(socket))
            qFatal("no socket for the eyes");
    }

private:
    QLocalServer m_server;
};

class Plugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "eyes.json")

public:
    QObject *create(const QString &, const QString &) override
    {
        const QString socket = qEnvironmentVariable("PLUM_EYES");
        // Programs that this one starts have eyes of their own or none.
        qunsetenv("PLUM_EYES");
        qunsetenv("QT_QPA_GENERIC_PLUGINS");
        return new Eyes(socket);
    }
};

} // namespace plum::eyes

#include "main.moc"
