#pragma once

#include "http/http_client.h"

#include <QObject>

namespace plum {

class StopSignal;

// An HTTP client whose requests end when the run is stopped; the run is left with RunStopped then.
class StoppableHttpClient final : public HttpClient
{
public:
    StoppableHttpClient(HttpClient &inner, const StopSignal &stop);

    QString unavailable() override { return m_inner.unavailable(); }
    HttpReply get(const QString &url) override;
    HttpReply request(const HttpRequest &request) override;
    HttpReply post(const QString &url, const QByteArray &contentType, QIODevice &body) override;
    void giveUp() override { m_inner.giveUp(); }

private:
    HttpClient &m_inner;
    const StopSignal &m_stop;
    QObject m_listener;
};

} // namespace plum
