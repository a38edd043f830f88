#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

class QIODevice;

namespace plum {

// The answer to one request, after redirections.
struct HttpReply
{
    int status = 0; // 0: no complete answer arrived, and the other members are empty
    QByteArray contentType;
    QByteArray body; // decompressed
};

// A request with all that a script can say about it.
struct HttpRequest
{
    QByteArray method; // "GET", ...
    QString url;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    int milliseconds = 0; // how long the whole may take; 0: as long as it does
};

// Requests over HTTP and HTTPS. A call returns when the whole answer is there, however long that takes, or
// when the process is about to end; the user interface lives meanwhile. Nothing is kept between calls: no
// connections, no cookies, no cache. Other schemes than http and https are failing connections.
//
// At most 10 redirections are followed, never from https down to http. A certificate that cannot be verified
// is a failing connection. So is an answer of more than `largestBody` bytes.
class HttpClient
{
public:
    static constexpr qint64 largestBody = qint64(256) << 20;

    virtual ~HttpClient() = default;

    // Empty when requests can be made; else the reason why not, in one line.
    virtual QString unavailable() = 0;

    virtual HttpReply get(const QString &url) = 0;

    // A request that takes longer than it may has no answer. Its redirections are followed as others are.
    virtual HttpReply request(const HttpRequest &request) = 0;

    // `body` is open, not sequential, and at its start. It is read as it is sent, so that its size does not
    // matter to this program's memory.
    virtual HttpReply post(const QString &url, const QByteArray &contentType, QIODevice &body) = 0;

    // Gives up every request that is under way, from an event of the loop that it waits in; none of them has
    // an answer then.
    virtual void giveUp() { }
};

} // namespace plum
