#include "transport/http_exchange.h"

#include <QLocale>
#include <QNetworkProxy>
#include <QPointer>
#include <QSslSocket>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRedirections = 10;
constexpr qint64 pieceSize = 256 * 1024; // bytes, read or sent at once
constexpr int httpPort = 80;
constexpr int httpsPort = 443;

bool isSecure(const QUrl &url)
{
    return url.scheme() == "https"_L1;
}

bool isHttp(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http"_L1 || isSecure(url));
}

int portOf(const QUrl &url)
{
    return url.port(isSecure(url) ? httpsPort : httpPort);
}

QByteArray basicCredentials(const QString &user, const QString &password)
{
    return "Basic " + (user + u':' + password).toUtf8().toBase64();
}

// The language of the system, as browsers ask for it; pages in several languages are had in that one.
QByteArray acceptedLanguages()
{
    const QByteArray language = QLocale::system().name().toLatin1().replace('_', '-');
    if (language == "C")
        return "en,*";
    return language.startsWith("en") ? language + ",*" : language + ",en,*";
}

// Where an answer sends the client on to; an empty address for one that is final.
QUrl redirection(const HttpAnswer &answer, const QUrl &from)
{
    constexpr std::array redirecting{301, 302, 303, 307, 308};
    const QByteArray location = answer.header("Location");
    if (location.isEmpty() || std::ranges::find(redirecting, answer.status()) == redirecting.end())
        return {};
    return from.resolved(QUrl(QString::fromUtf8(location)));
}

bool keepsMethod(int status)
{
    return status == 307 || status == 308;
}

HttpExchange::End endFor(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::SslHandshakeFailedError:
    case QAbstractSocket::SslInternalError:
    case QAbstractSocket::SslInvalidUserDataError:
        return HttpExchange::End::Untrusted;
    default:
        return HttpExchange::End::Unreachable;
    }
}

} // namespace

HttpExchange::HttpExchange(QObject *parent)
    : QObject(parent)
{
    for (QTimer *timer : {&m_silence, &m_whole}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [this] { finish(End::TooSlow); });
    }
}

HttpExchange::~HttpExchange()
{
    drop();
}

void HttpExchange::start(const Request &request)
{
    stop();
    m_request = request;
    m_request.url.setFragment({});
    m_answer = {};
    m_redirections = 0;
    m_isRunning = true;
    ++m_number;
    if (m_request.whole.count() > 0)
        m_whole.start(m_request.whole);
    send();
}

void HttpExchange::stop()
{
    drop();
    m_whole.stop();
    m_isRunning = false;
}

void HttpExchange::send()
{
    if (!isHttp(m_request.url)) {
        // Reported like every other end: after start() has returned.
        QMetaObject::invokeMethod(
            this,
            [this, number = m_number] {
                if (m_isRunning && m_number == number)
                    finish(End::NoAddress);
            },
            Qt::QueuedConnection);
        return;
    }
    m_isSecure = isSecure(m_request.url);
    m_isConnected = false;
    auto *const secure = m_isSecure ? new QSslSocket(this) : nullptr;
    m_socket = secure ? secure : new QTcpSocket(this);
    if (secure)
        connect(secure, &QSslSocket::encrypted, this, &HttpExchange::onConnected);
    else
        connect(m_socket, &QTcpSocket::connected, this, &HttpExchange::onConnected);
    connect(m_socket, &QTcpSocket::readyRead, this, &HttpExchange::readMore);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &HttpExchange::writeMore);
    connect(m_socket, &QTcpSocket::disconnected, this, &HttpExchange::onConnectionEnded);
    // Queued, since connecting may fail at once; by then the socket may be that of a redirection.
    connect(
        m_socket, &QTcpSocket::errorOccurred, this,
        [this, socket = m_socket] {
            if (m_socket == socket)
                onConnectionEnded();
        },
        Qt::QueuedConnection);
    if (m_request.silence.count() > 0)
        m_silence.start(m_request.silence);

    QNetworkProxy proxy = QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(m_request.url)).value(0);
    const bool isHttpProxy
        = proxy.type() == QNetworkProxy::HttpProxy || proxy.type() == QNetworkProxy::HttpCachingProxy;
    m_viaProxy = isHttpProxy && !m_isSecure;
    m_proxyUser.clear();
    QString host = m_request.url.host();
    int port = portOf(m_request.url);
    if (m_viaProxy) {
        if (!proxy.user().isEmpty())
            m_proxyUser = basicCredentials(proxy.user(), proxy.password());
        host = proxy.hostName();
        port = proxy.port();
        m_socket->setProxy(QNetworkProxy::NoProxy);
    } else {
        if (isHttpProxy)
            proxy.setType(QNetworkProxy::HttpProxy); // which tunnels
        m_socket->setProxy(proxy);
    }
    if (secure)
        secure->connectToHostEncrypted(host, static_cast<quint16>(port));
    else
        m_socket->connectToHost(host, static_cast<quint16>(port));
}

QByteArray HttpExchange::head() const
{
    const QUrl &url = m_request.url;
    QByteArray host = url.host(QUrl::FullyEncoded).toLatin1();
    if (host.contains(':'))
        host = '[' + host + ']';
    if (url.port() >= 0)
        host += ':' + QByteArray::number(url.port());
    QByteArray target = url.path(QUrl::FullyEncoded).toLatin1();
    if (!target.startsWith('/'))
        target.prepend('/');
    if (url.hasQuery())
        target += '?' + url.query(QUrl::FullyEncoded).toLatin1();
    if (m_viaProxy)
        target = "http://" + host + target;

    QByteArray bytes = m_request.method + ' ' + target + " HTTP/1.1\r\nHost: " + host
        + "\r\nUser-Agent: Mozilla/5.0\r\nAccept: */*\r\nAccept-Language: " + acceptedLanguages()
        + "\r\nConnection: close\r\n";
    if (!url.userName().isEmpty())
        bytes += "Authorization: " + basicCredentials(url.userName(), url.password()) + "\r\n";
    if (!m_proxyUser.isEmpty())
        bytes += "Proxy-Authorization: " + m_proxyUser + "\r\n";
    for (const auto &[name, value] : m_request.headers)
        bytes += name + ": " + value + "\r\n";
    if (m_request.body)
        bytes += "Content-Length: " + QByteArray::number(m_request.body->size()) + "\r\n";
    return bytes + "\r\n";
}

void HttpExchange::onConnected()
{
    m_isConnected = true;
    if (m_request.body)
        m_request.body->seek(0);
    m_socket->write(head());
    writeMore();
}

// Keeps little of a large body in memory.
void HttpExchange::writeMore()
{
    if (m_silence.isActive())
        m_silence.start();
    if (!m_isConnected || !m_request.body)
        return;
    const auto *const secure = qobject_cast<QSslSocket *>(m_socket);
    const auto waiting
        = [&] { return m_socket->bytesToWrite() + (secure ? secure->encryptedBytesToWrite() : 0); };
    while (!m_request.body->atEnd() && waiting() < pieceSize) {
        const QByteArray piece = m_request.body->read(pieceSize);
        if (piece.isEmpty())
            return finish(End::Unsent);
        m_socket->write(piece);
    }
}

void HttpExchange::readMore()
{
    const QPointer<HttpExchange> self(this);
    const int number = m_number;
    const QPointer<QTcpSocket> socket(m_socket);
    const auto isOver = [&] { return !self || m_number != number || m_socket != socket || !m_socket; };
    if (m_silence.isActive())
        m_silence.start();
    while (!isOver() && m_socket->bytesAvailable() > 0) {
        QByteArray body;
        const bool hadHead = m_answer.hasHead();
        m_answer.take(m_socket->read(pieceSize), body);
        if (!hadHead && m_answer.hasHead()) {
            if (!useHead() || isOver())
                return;
        }
        if (!body.isEmpty()) {
            Q_EMIT arrived(body);
            if (isOver())
                return;
        }
        if (m_answer.state() == HttpAnswer::State::Complete)
            return finish(End::Complete);
        if (m_answer.state() == HttpAnswer::State::NotHttp)
            return finish(End::NotHttp);
    }
}

// False when this answer is not the final one, or no more is wanted of it.
bool HttpExchange::useHead()
{
    const QUrl next = redirection(m_answer, m_request.url);
    if (!next.isEmpty())
        return follow(next);
    const QPointer<HttpExchange> self(this);
    const int number = m_number;
    Q_EMIT answered();
    return self && m_isRunning && m_number == number;
}

bool HttpExchange::follow(const QUrl &next)
{
    const bool isDown = isSecure(m_request.url) && !isSecure(next);
    if (!isHttp(next) || isDown || ++m_redirections > mostRedirections) {
        finish(End::Astray);
        return false;
    }
    if (!keepsMethod(m_answer.status())) {
        m_request.method = "GET";
        m_request.body = nullptr;
        dropHeader("Content-Type");
    }
    // What is meant for one server is not told to another.
    if (next.host() != m_request.url.host() || next.port() != m_request.url.port()) {
        dropHeader("Authorization");
        dropHeader("Cookie");
    }
    drop();
    m_request.url = next;
    m_request.url.setFragment({});
    m_answer = {};
    send();
    return false;
}

void HttpExchange::dropHeader(QByteArrayView name)
{
    m_request.headers.removeIf(
        [name](const auto &header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; });
}

void HttpExchange::onConnectionEnded()
{
    if (!m_socket)
        return;
    const QPointer<HttpExchange> self(this);
    const int number = m_number;
    const QPointer<QTcpSocket> socket(m_socket);
    readMore(); // what came before the end
    if (!self || m_number != number || !m_socket || m_socket != socket)
        return;
    if (!m_isConnected)
        return finish(endFor(m_socket->error()));
    m_answer.end();
    finish(m_answer.state() == HttpAnswer::State::Complete ? End::Complete : End::Cut);
}

void HttpExchange::finish(End end)
{
    stop();
    Q_EMIT ended(end);
}

// Lets go of the connection, from which nothing comes any more.
void HttpExchange::drop()
{
    m_silence.stop();
    QTcpSocket *const socket = std::exchange(m_socket, nullptr);
    if (!socket)
        return;
    socket->disconnect(this);
    socket->setParent(nullptr);
    socket->deleteLater(); // not at once nor with this object: one of its own signals may have led here
}

} // namespace plum
