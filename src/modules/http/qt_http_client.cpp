#include "modules/http/qt_http_client.h"

#include "transport/content_decoding.h"
#include "transport/http_exchange.h"

#include <QBuffer>
#include <QEventLoop>

#include <algorithm>
#include <optional>

namespace plum {

// Gathers the answer's body as it arrives and gives up when it grows too large.
class AwaitedAnswer
{
public:
    explicit AwaitedAnswer(std::vector<AwaitedAnswer *> &all)
        : m_all(all)
    {
        m_all.push_back(this);
        QObject::connect(&m_exchange, &HttpExchange::answered, &m_loop, [this] { prepare(); });
        QObject::connect(
            &m_exchange, &HttpExchange::arrived, &m_loop, [this](const QByteArray &piece) { take(piece); });
        QObject::connect(&m_exchange, &HttpExchange::ended, &m_loop, [this](HttpExchange::End end) {
            m_end = end;
            m_loop.quit();
        });
    }
    ~AwaitedAnswer() { m_all.pop_back(); }
    Q_DISABLE_COPY_MOVE(AwaitedAnswer)

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

    void giveUp()
    {
        m_exchange.stop();
        m_loop.quit();
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

    std::vector<AwaitedAnswer *> &m_all;
    QEventLoop m_loop;
    HttpExchange m_exchange;
    std::optional<HttpExchange::End> m_end;
    QByteArray m_body;
};

namespace {

const QList<std::pair<QByteArray, QByteArray>> acceptedEncodings{{"Accept-Encoding", "gzip, deflate"}};

} // namespace

HttpReply QtHttpClient::get(const QString &url)
{
    return AwaitedAnswer(m_awaited).of({.url = QUrl(url.trimmed()), .headers = acceptedEncodings});
}

HttpReply QtHttpClient::request(const HttpRequest &request)
{
    QBuffer body;
    body.setData(request.body);
    body.open(QIODevice::ReadOnly);
    return AwaitedAnswer(m_awaited).of({.url = QUrl(request.url.trimmed()),
        .method = request.method,
        .headers = acceptedEncodings + request.headers,
        .body = request.body.isEmpty() ? nullptr : &body,
        .whole = std::chrono::milliseconds(request.milliseconds)});
}

HttpReply QtHttpClient::post(const QString &url, const QByteArray &contentType, QIODevice &body)
{
    return AwaitedAnswer(m_awaited).of({.url = QUrl(url.trimmed()),
        .method = "POST",
        .headers = acceptedEncodings + decltype(acceptedEncodings){{"Content-Type", contentType}},
        .body = &body});
}

void QtHttpClient::giveUp()
{
    for (AwaitedAnswer *answer : m_awaited)
        answer->giveUp();
}

} // namespace plum
