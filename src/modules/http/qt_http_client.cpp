#include "modules/http/qt_http_client.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <optional>

namespace plum {

namespace {

constexpr int mostRedirections = 10;

bool isHttp(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty()
        && (url.scheme() == QLatin1StringView("http") || url.scheme() == QLatin1StringView("https"));
}

QNetworkRequest requestFor(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    return request;
}

// Gathers the answer's body as it arrives and gives up when it grows too large.
class Arrival
{
public:
    explicit Arrival(QNetworkReply &reply)
        : m_reply(reply)
    {
        QObject::connect(&reply, &QNetworkReply::readyRead, &reply, [this] { take(); });
        QObject::connect(&reply, &QNetworkReply::finished, &m_loop, &QEventLoop::quit);
    }
    Q_DISABLE_COPY_MOVE(Arrival)

    // Until `deadline`; what has not come by then is given up.
    HttpReply wait(QDeadlineTimer deadline)
    {
        QTimer timer;
        if (!deadline.isForever()) {
            QObject::connect(&timer, &QTimer::timeout, &m_reply, &QNetworkReply::abort);
            timer.setSingleShot(true);
            timer.start(static_cast<int>(deadline.remainingTime()));
        }
        // The loop also ends when the process is about to: the request is then given up.
        if (!m_reply.isFinished())
            m_loop.exec();
        const int status = m_reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const bool complete = m_reply.isFinished() && isAnswer(status, m_reply.error());
        take();
        if (!complete || m_tooLarge || isCut(status))
            return {};
        return {status, m_reply.rawHeader("Content-Type"), std::move(m_body)};
    }

private:
    // Qt counts a status of 400 and above as an error of its own kinds, but the answer has arrived.
    static bool isAnswer(int status, QNetworkReply::NetworkError error)
    {
        return error == QNetworkReply::NoError
            || (status >= 400 && error >= QNetworkReply::ContentAccessDenied);
    }

    // Qt at times takes the end of the connection for the end of the body. It hides the announced length of a
    // body that it has decompressed.
    bool isCut(int status) const
    {
        constexpr int notModified = 304; // announces what it does not send
        bool isNumber = false;
        const qint64 announced = m_reply.rawHeader("Content-Length").trimmed().toLongLong(&isNumber);
        return isNumber && status != notModified && m_body.size() < announced;
    }

    void take()
    {
        const qint64 available = m_reply.bytesAvailable();
        if (m_tooLarge || available == 0)
            return;
        if (m_body.size() + available > HttpClient::largestBody) {
            m_tooLarge = true;
            m_body.clear();
            m_reply.abort();
            return;
        }
        if (m_body.isEmpty())
            m_body.reserve(expectedSize());
        const qsizetype before = m_body.size();
        m_body.resize(before + available);
        m_body.resize(before + std::max<qint64>(0, m_reply.read(m_body.data() + before, available)));
    }

    qsizetype expectedSize() const
    {
        const qint64 announced = m_reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
        return announced <= HttpClient::largestBody ? announced : 0;
    }

    QNetworkReply &m_reply;
    QEventLoop m_loop;
    QByteArray m_body;
    bool m_tooLarge = false;
};

// Where an answer sends the client on to; nothing for one that is final.
std::optional<QUrl> redirection(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray location = reply.rawHeader("Location");
    constexpr std::array redirecting{301, 302, 303, 307, 308};
    if (location.isEmpty() || std::ranges::find(redirecting, status) == redirecting.end())
        return {};
    return reply.url().resolved(QUrl(QString::fromUtf8(location)));
}

bool keepsMethod(int status)
{
    return status == 307 || status == 308;
}

constexpr QByteArrayView getMethod("GET");

// What is sent: `body` is null for a request without one.
struct Sending
{
    QByteArray method = getMethod.toByteArray();
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    QIODevice *body = nullptr;
    QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever);
};

QNetworkReply *send(QNetworkAccessManager &manager, const QNetworkRequest &request, const Sending &sending)
{
    if (sending.method == getMethod && !sending.body)
        return manager.get(request);
    if (sending.method == "POST" && sending.body)
        return manager.post(request, sending.body);
    return manager.sendCustomRequest(request, sending.method, sending.body);
}

// One exchange after the other, until an answer is final. Redirections are followed here and not by Qt, which
// at times loses a body that it has to send again.
HttpReply exchange(const QString &url, Sending sending)
{
    QUrl address(url.trimmed());
    for (int redirections = 0; isHttp(address) && redirections <= mostRedirections; ++redirections) {
        QNetworkRequest request = requestFor(address);
        QNetworkAccessManager manager;
        for (const auto &[name, value] : std::as_const(sending.headers))
            request.setRawHeader(name, value);
        if (sending.body)
            sending.body->seek(0);
        QNetworkReply *reply = send(manager, request, sending);
        const HttpReply answer = Arrival(*reply).wait(sending.deadline);
        const std::optional<QUrl> next = redirection(*reply);
        if (answer.status == 0 || !next)
            return answer;
        if (address.scheme() == QLatin1StringView("https") && next->scheme() != address.scheme())
            return {};
        if (!keepsMethod(answer.status) && sending.method != "HEAD") {
            sending.method = getMethod.toByteArray();
            sending.body = nullptr;
            sending.headers.removeIf([](const auto &header) {
                return header.first.compare("Content-Type", Qt::CaseInsensitive) == 0;
            });
        }
        // What is meant for one server is not told to another.
        if (next->host() != address.host() || next->port() != address.port()) {
            sending.headers.removeIf([](const auto &header) {
                return header.first.compare("Authorization", Qt::CaseInsensitive) == 0
                    || header.first.compare("Cookie", Qt::CaseInsensitive) == 0;
            });
        }
        address = *next;
    }
    return {};
}

} // namespace

HttpReply QtHttpClient::get(const QString &url)
{
    return exchange(url, {});
}

HttpReply QtHttpClient::post(const QString &url, const QByteArray &contentType, QIODevice &body)
{
    return exchange(
        url, {.method = QByteArrayLiteral("POST"), .headers = {{"Content-Type", contentType}}, .body = &body});
}

HttpReply QtHttpClient::request(const HttpRequest &request)
{
    QBuffer body;
    body.setData(request.body);
    body.open(QIODevice::ReadOnly);
    return exchange(request.url,
        {.method = request.method,
            .headers = request.headers,
            .body = request.body.isEmpty() ? nullptr : &body,
            .deadline = request.milliseconds > 0 ? QDeadlineTimer(request.milliseconds)
                                                 : QDeadlineTimer(QDeadlineTimer::Forever)});
}

} // namespace plum
