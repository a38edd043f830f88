#include "download/byte_server.h"

#include <gtest/gtest.h>

#include <sys/socket.h>

namespace plum::testing {

using namespace Qt::StringLiterals;

QByteArray httpAnswer(const QByteArray &status, const QByteArrayList &headers, const QByteArray &body)
{
    QByteArray bytes = "HTTP/1.1 " + status + "\r\nConnection: close\r\n";
    for (const QByteArray &header : headers)
        bytes += header + "\r\n";
    return bytes + "\r\n" + body;
}

ByteServer::ByteServer()
{
    EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
    connect(&m_server, &QTcpServer::newConnection, this, &ByteServer::onConnection);
}

void ByteServer::answer(const Answer &answer)
{
    if (std::exchange(m_lastWasGiven, false))
        m_answers.clear();
    m_answers.push_back(answer);
}

void ByteServer::serve(const QByteArray &content, qint64 most)
{
    m_content = content;
    m_most = most;
}

void ByteServer::trickle(const QByteArray &bytes, int pace)
{
    answer({bytes, Then::Stall});
    m_pace = pace;
}

QString ByteServer::url(const QString &path) const
{
    return u"http://127.0.0.1:%1/%2"_s.arg(m_server.serverPort()).arg(path);
}

QList<QByteArray> ByteServer::headers(const QByteArray &name) const
{
    QList<QByteArray> values;
    for (const QByteArray &request : requests) {
        for (const QByteArray &line : request.split('\n')) {
            if (line.toLower().startsWith(name + ':'))
                values += line.sliced(name.size() + 1).trimmed();
        }
    }
    return values;
}

void ByteServer::onConnection()
{
    while (QTcpSocket *const socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, request = QByteArray()]() mutable {
            request += socket->readAll();
            const qsizetype headEnd = request.indexOf("\r\n\r\n");
            if (headEnd < 0)
                return;
            request.truncate(headEnd + 4); // what else comes is not looked at
            requests += request;
            socket->disconnect(this);
            connect(socket, &QTcpSocket::readyRead, socket, [socket] { socket->readAll(); });
            const Answer answer = answerTo(request);
            socket->write(answer.bytes);
            if (m_pace > 0) {
                auto *const pace = new QTimer(socket);
                connect(pace, &QTimer::timeout, socket, [socket] { socket->write("x"); });
                pace->start(m_pace);
            }
            if (answer.then == Then::Close) {
                socket->disconnectFromHost();
            } else if (answer.then == Then::Reset) {
                // What was written arrives first, then the connection ends without a farewell.
                connect(socket, &QTcpSocket::bytesWritten, socket, [socket] {
                    if (socket->bytesToWrite() > 0)
                        return;
                    const linger now{.l_onoff = 1, .l_linger = 0};
                    setsockopt(static_cast<int>(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &now,
                        sizeof now);
                    socket->abort();
                });
            }
        });
    }
}

ByteServer::Answer ByteServer::answerTo(const QByteArray &request)
{
    if (m_content)
        return contentFor(request);
    const Answer answer = m_answers.empty() ? Answer{} : m_answers.front();
    m_lastWasGiven = m_answers.size() == 1;
    if (m_answers.size() > 1)
        m_answers.pop_front();
    return answer;
}

ByteServer::Answer ByteServer::contentFor(const QByteArray &request) const
{
    const qsizetype at = request.toLower().indexOf("range: bytes=");
    const qint64 from = at < 0 ? 0 : request.sliced(at + 13).split('-')[0].toLongLong();
    if (from >= m_content->size()) {
        return {httpAnswer("416 Range Not Satisfiable",
            {"Content-Range: bytes */" + QByteArray::number(m_content->size()), "Content-Length: 0"}, {})};
    }
    QByteArray body = m_content->sliced(from);
    const QByteArray head
        = httpAnswer("206 Partial Content", {"Content-Length: " + QByteArray::number(body.size())}, {});
    if (m_most >= 0 && m_most < body.size())
        return {head + body.first(m_most), Then::Reset};
    return {head + body};
}

} // namespace plum::testing
