#include "desktop/support/page_eyes.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QUrl>
#include <QtEndian>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 10'000; // milliseconds; a page that goes away meanwhile never answers

bool connectTo(QTcpSocket &socket, quint16 port)
{
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    return socket.waitForConnected(patience);
}

bool waitFor(QTcpSocket &socket, qint64 bytes)
{
    while (socket.bytesAvailable() < bytes) {
        if (!socket.waitForReadyRead(patience))
            return false;
    }
    return true;
}

QByteArray readLines(QTcpSocket &socket)
{
    QByteArray head;
    while (!head.endsWith("\r\n\r\n")) {
        if (!waitFor(socket, 1))
            return {};
        head += socket.read(1);
    }
    return head;
}

// One WebSocket text message of a client, which has to mask it; a mask of zeros changes nothing.
QByteArray frame(const QByteArray &text)
{
    QByteArray bytes("\x81\xFE", 2);
    const auto length = qToBigEndian(static_cast<quint16>(text.size()));
    bytes.append(reinterpret_cast<const char *>(&length), sizeof length);
    return bytes + QByteArray(4, '\0') + text;
}

QByteArray readFrame(QTcpSocket &socket)
{
    if (!waitFor(socket, 2))
        return {};
    const QByteArray head = socket.read(2);
    qint64 length = head[1] & 0x7F;
    const int more = length == 126 ? 2 : length == 127 ? 8 : 0;
    if (!waitFor(socket, more))
        return {};
    if (more > 0)
        length = 0;
    for (const char byte : socket.read(more))
        length = length << 8 | static_cast<quint8>(byte);
    return waitFor(socket, length) ? socket.read(length) : QByteArray();
}

} // namespace

QString PageEyes::pagePath() const
{
    QTcpSocket socket;
    if (!connectTo(socket, m_port))
        return {};
    socket.write("GET /json/list HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
    const QByteArray head = readLines(socket).toLower();
    const qint64 length
        = head.mid(head.indexOf("content-length:") + 15).split('\r')[0].trimmed().toLongLong();
    if (!waitFor(socket, length))
        return {};
    for (const QJsonValue &target : QJsonDocument::fromJson(socket.read(length)).array()) {
        if (target[u"type"_s] == u"page"_s && target[u"url"_s].toString().endsWith(m_address))
            return QUrl(target[u"webSocketDebuggerUrl"_s].toString()).path();
    }
    return {};
}

QJsonValue PageEyes::see(const QString &expression) const
{
    const QString path = pagePath();
    QTcpSocket socket;
    if (path.isEmpty() || !connectTo(socket, m_port))
        return QJsonValue::Undefined;
    socket.write("GET " + path.toLatin1()
        + " HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
          "Sec-WebSocket-Key: cGx1bSBsb29rcyBhdCBpdA==\r\nSec-WebSocket-Version: 13\r\n\r\n");
    if (!readLines(socket).startsWith("HTTP/1.1 101"))
        return QJsonValue::Undefined;
    const QJsonObject question{{u"id"_s, 1}, {u"method"_s, u"Runtime.evaluate"_s},
        {u"params"_s, QJsonObject{{u"expression"_s, expression}, {u"returnByValue"_s, true}}}};
    socket.write(frame(QJsonDocument(question).toJson(QJsonDocument::Compact)));
    const QJsonObject answer = QJsonDocument::fromJson(readFrame(socket)).object();
    return answer[u"result"_s][u"result"_s][u"value"_s];
}

} // namespace plum
