#pragma once

#include "support/temporary_files.h"
#include "support/test_server.h"
#include "support/wait_until.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QUrl>

#include <csignal>

namespace plum::test {

// A generated store behind nginx, on a port of its own or on a given one.
class Shop
{
public:
    explicit Shop(int port = freePort())
        : m_port(port)
    {
    }
    ~Shop() { cut(); }
    Q_DISABLE_COPY_MOVE(Shop)

    // Adds to the starter apps; to be called before serve().
    void addApp(const QString &name, const QByteArray &script, const QByteArray &content = {})
    {
        m_files.write(QStringLiteral("apps/%1/main.wf").arg(name), script);
        if (!content.isEmpty())
            m_files.write(QStringLiteral("apps/%1/content").arg(name), content);
    }

    void addPage(const QString &name, const QByteArray &html)
    {
        m_files.write(QStringLiteral("out/") + name, html);
    }

    // `serverLines` are further lines for nginx, such as "limit_rate 200k;".
    bool serve(const QString &serverLines = {})
    {
        QProcess::execute(
            QStringLiteral("cp"), {QStringLiteral("-r"), QStringLiteral(PLUM_APPS), m_files.folder()});
        return publish() && resume(serverLines);
    }

    // Makes the store's files anew, and signs them when there are keys.
    bool publish()
    {
        return command({m_files.folder() + QStringLiteral("/apps"), output()})
            && (!QFile::exists(keys())
                || command({QStringLiteral("sign"), output(), QStringLiteral("--keys"), keys()}));
    }

    // Keys for the store; to be called before serve(). The answer is the public one of the root.
    QByteArray makeKeys()
    {
        QProcess maker;
        maker.start(QStringLiteral(PLUM_STORE), {QStringLiteral("keys"), keys()});
        maker.waitForFinished();
        return maker.readAllStandardOutput().trimmed().split('=').value(1);
    }

    // Takes the newest version of an app back; to be published.
    bool takeBack(const QString &name, const QString &reason)
    {
        return command({QStringLiteral("revoke"), output(), name, QStringLiteral("--reason"), reason});
    }

    qint64 packageSize(const QString &name) const
    {
        return QFileInfo(output() + QStringLiteral("/plum/download/%1.wfp").arg(name)).size();
    }

    bool resume(const QString &serverLines = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("PLUM_STORE_NGINX"), serverLines);
        m_server.setProcessEnvironment(environment);
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(QStringLiteral(PLUM_SERVE_STORE), {output(), address()});
        return waitUntil([this] {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(m_port));
            return socket.waitForConnected(200);
        });
    }

    // The server is gone, with its connections.
    void cut()
    {
        speakAgain();
        m_server.terminate();
        m_server.waitForFinished();
    }

    // The server answers nothing from now on, its connections stay.
    void fallSilent() { signalToServers(SIGSTOP); }
    void speakAgain() { signalToServers(SIGCONT); }

    QUrl url(const QString &path = {}) const { return QUrl(QStringLiteral("http://") + address() + path); }

private:
    static bool command(const QStringList &arguments)
    {
        return QProcess::execute(QStringLiteral(PLUM_STORE), arguments) == 0;
    }

    QString keys() const { return m_files.folder() + QStringLiteral("/keys"); }

    // To nginx's workers, the children of the child of the script that serves.
    void signalToServers(int number)
    {
        for (const qint64 child : childrenOf(m_server.processId())) {
            for (const qint64 worker : childrenOf(child))
                ::kill(static_cast<pid_t>(worker), number);
        }
    }

    static QList<qint64> childrenOf(qint64 process)
    {
        QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(process));
        QList<qint64> children;
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray &child : file.readAll().split(' ')) {
                if (!child.isEmpty())
                    children += child.toLongLong();
            }
        }
        return children;
    }

    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    QString output() const { return m_files.folder() + QStringLiteral("/out"); }

    TemporaryFiles m_files;
    QProcess m_server;
    const int m_port;
};

} // namespace plum::test
