#include "desktop/eyes/snapshot.h"

#include <QGenericPlugin>
#include <QGuiApplication>
#include <QLocalServer>
#include <QLocalSocket>

#include <cstdlib>
#include <xcb/xcb.h>

// Eyes for a test inside a program that does not know it is tested: a plugin of Qt, loaded by
// QT_QPA_GENERIC_PLUGINS, that answers each line on the local socket PLUM_EYES with what the program shows.
// It never touches anything.

namespace plum::eyes {

// What the program shows holds for the X server, too, once this returns: Qt sends what it wants of the server
// a little later, and a press that came between would meet a menu that the program believes closed.
static void waitForServer()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return;
    xcb_connection_t *connection = x11->connection();
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

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
                    const QByteArray seen = snapshot();
                    waitForServer();
                    asking->write(seen + '\n');
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
