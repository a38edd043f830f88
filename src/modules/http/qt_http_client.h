#pragma once

#include "http/http_client.h"

#include <vector>

namespace plum {

class AwaitedAnswer;

// HTTP on Qt's sockets.
class QtHttpClient final : public HttpClient
{
public:
    QString unavailable() override { return {}; }
    HttpReply get(const QString &url) override;
    HttpReply request(const HttpRequest &request) override;
    HttpReply post(const QString &url, const QByteArray &contentType, QIODevice &body) override;
    void giveUp() override;

private:
    // Those under way, the innermost last: what runs inside a wait may make requests, too.
    std::vector<AwaitedAnswer *> m_awaited;
};

} // namespace plum
