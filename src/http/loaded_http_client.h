#pragma once

#include "http/http_client.h"

#include <memory>

namespace plum {

// The HTTP client of the module `plum-http`, which is loaded with the first request. Without the module every
// request fails.
class LoadedHttpClient final : public HttpClient
{
public:
    QString unavailable() override;
    HttpReply get(const QString &url) override;
    HttpReply request(const HttpRequest &request) override;
    HttpReply post(const QString &url, const QByteArray &contentType, QIODevice &body) override;
    void giveUp() override;

private:
    std::unique_ptr<HttpClient> m_client;
};

} // namespace plum
