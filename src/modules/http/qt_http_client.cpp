#include "modules/http/qt_http_client.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

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
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirections);
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

    HttpReply wait()
    {
        // The loop also ends when the process is about to: the request is then given up.
        if (!m_reply.isFinished())
            m_loop.exec();
        const int status = m_reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const bool complete = m_reply.isFinished() && isAnswer(status, m_reply.error());
        take();
        if (!complete || m_tooLarge)
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

} // namespace

HttpReply QtHttpClient::get(const QString &url)
{
    const QUrl address(url.trimmed());
    if (!isHttp(address))
        return {};
    QNetworkAccessManager manager;
    return Arrival(*manager.get(requestFor(address))).wait();
}

HttpReply QtHttpClient::post(const QString &url, const QByteArray &contentType, QIODevice &body)
{
    const QUrl address(url.trimmed());
    if (!isHttp(address))
        return {};
    QNetworkRequest request = requestFor(address);
    request.setHeader(QNetworkRequest::ContentTypeHeader, contentType);
    QNetworkAccessManager manager;
    return Arrival(*manager.post(request, &body)).wait();
}

} // namespace plum
