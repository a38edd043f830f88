#include "modules/http/qt_http_client.h"

#include "transport/content_decoding.h"
#include "transport/http_exchange.h"

#include <QBuffer>
#include <QEventLoop>

#include <algorithm>
#include <optional>

namespace plum {

namespace {

// Gathers the answer's body as it arrives and gives up when it grows too large.
class Arrival
{
public:
    Arrival()
    {
        QObject::connect(&m_exchange, &HttpExchange::answered, &m_loop, [this] { prepare(); });
        QObject::connect(
            &m_exchange, &HttpExchange::arrived, &m_loop, [this](const QByteArray &piece) { take(piece); });
        QObject::connect(&m_exchange, &HttpExchange::ended, &m_loop, [this](HttpExchange::End end) {
            m_end = end;
            m_loop.quit();
        });
    }
    Q_DISABLE_COPY_MOVE(Arrival)

    HttpReply of(const HttpExchange::Request &request)
    {
        m_exchange.start(request);
        // The loop also ends when the process is about to: the request is then given up.
        m_loop.exec();
        if (!m_end)
            return {};
        const HttpAnswer &answer = m_exchange.answer();
        const QByteArray encoding = answer.header("Content-Encoding");
        // Compressed data tells itself whether it is whole, better than a connection that ends.
        const bool mayBeWhole = m_end == HttpExchange::End::Complete
            || (m_end == HttpExchange::End::Cut && answer.hasHead() && tellsItsEnd(encoding)
                && !m_body.isEmpty());
        if (!mayBeWhole)
            return {};
        const std::optional<QByteArray> content = decodedContent(encoding, m_body, HttpClient::largestBody);
        if (!content)
            return {};
        return {answer.status(), answer.header("Content-Type"), *content};
    }

private:
    void prepare()
    {
        const qint64 announced = m_exchange.answer().length().value_or(0);
        if (announced > HttpClient::largestBody)
            giveUp();
        else
            m_body.reserve(announced);
    }

    void take(const QByteArray &piece)
    {
        if (m_body.size() + piece.size() > HttpClient::largestBody)
            giveUp();
        else
            m_body += piece;
    }

    void giveUp()
    {
        m_exchange.stop();
        m_loop.quit();
    }

    QEventLoop m_loop;
    HttpExchange m_exchange;
    std::optional<HttpExchange::End> m_end;
    QByteArray m_body;
};

const QList<std::pair<QByteArray, QByteArray>> acceptedEncodings{{"Accept-Encoding", "gzip, deflate"}};

} // namespace

HttpReply QtHttpClient::get(const QString &url)
{
    return Arrival().of({.url = QUrl(url.trimmed()), .headers = acceptedEncodings});
}

HttpReply QtHttpClient::request(const HttpRequest &request)
{
    QBuffer body;
    body.setData(request.body);
    body.open(QIODevice::ReadOnly);
    return Arrival().of({.url = QUrl(request.url.trimmed()),
        .method = request.method,
        .headers = acceptedEncodings + request.headers,
        .body = request.body.isEmpty() ? nullptr : &body,
        .whole = std::chrono::milliseconds(request.milliseconds)});
}

HttpReply QtHttpClient::post(const QString &url, const QByteArray &contentType, QIODevice &body)
{
    return Arrival().of({.url = QUrl(url.trimmed()),
        .method = "POST",
        .headers = acceptedEncodings + decltype(acceptedEncodings){{"Content-Type", contentType}},
        .body = &body});
}

} // namespace plum
