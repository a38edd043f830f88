#pragma once

#include "transport/http_answer.h"

#include <QList>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <utility>

class QIODevice;
class QTcpSocket;

namespace plum {

// One request over HTTP or HTTPS and its answer, which is handed out as it arrives. Redirections that say
// where to are followed, 10 at most, never from https down to http. Nothing is kept between requests: no
// connections, no cookies, no cache. A certificate that cannot be verified ends the exchange.
//
// Everything is reported from the event loop. A handler may end the exchange or delete it.
class HttpExchange final : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QUrl url;
        QByteArray method = "GET";
        QList<std::pair<QByteArray, QByteArray>> headers = {};
        // Sent from its beginning, if set; open, not sequential, and alive until the end.
        QIODevice *body = nullptr;
        // The exchange fails when nothing arrives or goes out for so long, or when it takes so long as a
        // whole. 0: however long it takes.
        std::chrono::milliseconds silence{0};
        std::chrono::milliseconds whole{0};
    };

    enum class End {
        Complete,
        NoAddress, // none of http or https
        Unreachable, // no such server, or it does not listen
        Untrusted, // the server could not prove who it is
        TooSlow,
        Cut, // the connection ended before the answer did
        NotHttp, // what came is no answer, or its head is too long
        Astray, // too many redirections, or one to where none is followed
        Unsent, // the request's body could not be read
    };

    explicit HttpExchange(QObject *parent = nullptr);
    ~HttpExchange() override;

    void start(const Request &request);

    // Ends the exchange without a word.
    void stop();

    bool isRunning() const { return m_isRunning; }

    // The final answer, once its head is there.
    const HttpAnswer &answer() const { return m_answer; }

Q_SIGNALS:
    void answered();
    void arrived(const QByteArray &piece); // of the body
    void ended(plum::HttpExchange::End end);

private:
    void send();
    void onConnected();
    void writeMore();
    void readMore();
    bool useHead();
    bool follow(const QUrl &next);
    void dropHeader(QByteArrayView name);
    void onConnectionEnded();
    void finish(End end);
    void drop();
    QByteArray head() const;

    Request m_request;
    HttpAnswer m_answer;
    QTcpSocket *m_socket = nullptr;
    bool m_isSecure = false;
    bool m_viaProxy = false; // a proxy that is told the whole address
    QByteArray m_proxyUser;
    bool m_isConnected = false;
    bool m_isRunning = false;
    int m_redirections = 0;
    int m_number = 0; // of the exchange, since handlers may start another one
    QTimer m_silence;
    QTimer m_whole;
};

} // namespace plum
