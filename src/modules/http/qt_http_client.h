#pragma once

#include "http/http_client.h"

namespace plum {

// HTTP on Qt's sockets.
class QtHttpClient final : public HttpClient
{
public:
    QString unavailable() override { return {}; }
    HttpReply get(const QString &url) override;
    HttpReply request(const HttpRequest &request) override;
    HttpReply post(const QString &url, const QByteArray &contentType, QIODevice &body) override;
};

} // namespace plum
