#pragma once

#include "support/wait_until.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace plum::test {

// tests/support/http_server.py in a process of its own; it ends with this object.
class OddServer
{
public:
    explicit OddServer(const QStringList &certificateAndKey = {})
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral("python3"),
            QStringList{QStringLiteral(PLUM_TESTS_FOLDER "/support/http_server.py")} + certificateAndKey);
        while (!m_process.canReadLine() && m_process.waitForReadyRead(patience)) { }
        m_port = m_process.readLine().trimmed().toInt();
        m_scheme = certificateAndKey.isEmpty() ? QStringLiteral("http") : QStringLiteral("https");
    }

    ~OddServer()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(OddServer)

    QString address(const QString &path) const
    {
        return QStringLiteral("%1://127.0.0.1:%2/%3").arg(m_scheme).arg(m_port).arg(path);
    }

private:
    QProcess m_process;
    QString m_scheme;
    int m_port = 0;
};

// A port of the loopback interface that nothing listens on, for a server that is given its port. The system
// hands ports of its own range to every connection, also between this look and that server's start; these are
// below it.
inline int freePort()
{
    constexpr int first = 10'000;
    constexpr int beyond = 32'768;
    QTcpServer server;
    while (!server.listen(QHostAddress::LocalHost,
        static_cast<quint16>(QRandomGenerator::system()->bounded(first, beyond)))) { }
    return server.serverPort();
}

// nginx serving a folder of its own.
class Nginx
{
public:
    // False when nginx could not be started.
    bool start(const QString &serverBlock = {})
    {
        m_port = freePort();
        QDir(m_folder.path()).mkdir(QStringLiteral("www"));
        QFile configuration(m_folder.filePath(QStringLiteral("nginx.conf")));
        if (!configuration.open(QIODevice::WriteOnly))
            return false;
        configuration.write(QStringLiteral(R"(
daemon off; master_process off; pid %1/pid; error_log %1/error.log;
events {}
http {
    access_log %1/access.log; client_body_temp_path %1/body; proxy_temp_path %1/proxy; fastcgi_temp_path %1/fastcgi;
    uwsgi_temp_path %1/uwsgi; scgi_temp_path %1/scgi; types { text/html html; }
    server { listen 127.0.0.1:%2; root %1/www; %3 }
}
)")
                                .arg(m_folder.path())
                                .arg(m_port)
                                .arg(serverBlock)
                                .toUtf8());
        configuration.close();
        m_process.start(QStringLiteral("/usr/sbin/nginx"),
            {QStringLiteral("-e"), m_folder.filePath(QStringLiteral("error.log")), QStringLiteral("-c"),
                configuration.fileName()});
        return m_process.waitForStarted() && waitUntilItListens();
    }

    ~Nginx()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    QString folder() const { return m_folder.filePath(QStringLiteral("www")); }

    // One line a request: address, time, request line, status, length.
    QByteArray log() const
    {
        QFile file(m_folder.filePath(QStringLiteral("access.log")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString address(const QString &path) const
    {
        return QStringLiteral("http://127.0.0.1:%1/%2").arg(m_port).arg(path);
    }

private:
    bool waitUntilItListens()
    {
        while (m_process.state() == QProcess::Running) {
            QTcpSocket socket;
            socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(m_port));
            if (socket.waitForConnected())
                return true;
            m_process.waitForFinished(10);
        }
        return false;
    }

    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};

} // namespace plum::test
