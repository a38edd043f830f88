#pragma once

#include <QHash>
#include <QSet>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

namespace plum::test {

// A web server on the loopback interface that hands out what a test gives it, and misbehaves as it is told.
class Mirror
{
public:
    Mirror()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket *socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
        });
    }
    ~Mirror() { m_server.disconnect(); }
    Q_DISABLE_COPY_MOVE(Mirror)

    // The folder of the packages.
    QUrl base() const
    {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(m_folder));
    }

    QHash<QString, QByteArray> files; // below that folder
    QSet<QString> endless; // never end
    QSet<QString> silent; // are never answered
    QSet<QString> trickling; // come a byte at a time, and never whole
    int delay = 0; // milliseconds before each answer
    QByteArray pageForMissing; // sent with 200 for what is not there; empty: 404
    QStringList requests; // the files that were asked for

private:
    void answer(QTcpSocket &socket)
    {
        const QByteArray request = socket.peek(1 << 16);
        if (!request.contains("\r\n\r\n"))
            return;
        socket.readAll();
        QString name = QString::fromUtf8(QByteArray::fromPercentEncoding(request.split(' ').value(1)));
        name = name.startsWith(m_folder) ? name.sliced(m_folder.size()) : QString();
        requests += name;
        if (silent.contains(name))
            return;
        if (trickling.contains(name)) {
            socket.write("HTTP/1.1 200 OK\r\n\r\n");
            trickle(socket);
            return;
        }
        if (delay > 0)
            QTimer::singleShot(delay, &socket, [this, name, &socket] { send(socket, name); });
        else
            send(socket, name);
    }

    void send(QTcpSocket &socket, const QString &name) const
    {
        if (endless.contains(name)) {
            socket.write("HTTP/1.1 200 OK\r\n\r\n" + files.value(name));
            pour(socket);
            return;
        }
        const bool isThere = files.contains(name) || !pageForMissing.isEmpty();
        const QByteArray body = files.value(name, pageForMissing);
        socket.write(QByteArray(isThere ? "HTTP/1.1 200 OK" : "HTTP/1.1 404 Not Found")
            + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        socket.disconnectFromHost();
    }

    static void trickle(QTcpSocket &socket)
    {
        constexpr int pace = 20; // milliseconds
        auto *timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write("{"); });
        timer->start(pace);
    }

    static void pour(QTcpSocket &socket)
    {
        const auto more = [&socket] {
            if (socket.bytesToWrite() < (1 << 16))
                socket.write(QByteArray(1 << 16, 'x'));
        };
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, more);
        more();
    }

    const QString m_folder = QStringLiteral("/plum/download/");
    QTcpServer m_server;
};

} // namespace plum::test
