#include "stopping/stoppable_http_client.h"

#include "platform/stop_signal.h"

namespace plum {

StoppableHttpClient::StoppableHttpClient(HttpClient &inner, const StopSignal &stop)
    : m_inner(inner)
    , m_stop(stop)
{
    QObject::connect(&stop, &StopSignal::raised, &m_listener, [this] { giveUp(); });
}

HttpReply StoppableHttpClient::get(const QString &url)
{
    m_stop.check();
    HttpReply reply = m_inner.get(url);
    m_stop.check();
    return reply;
}

HttpReply StoppableHttpClient::request(const HttpRequest &request)
{
    m_stop.check();
    HttpReply reply = m_inner.request(request);
    m_stop.check();
    return reply;
}

HttpReply StoppableHttpClient::post(const QString &url, const QByteArray &contentType, QIODevice &body)
{
    m_stop.check();
    HttpReply reply = m_inner.post(url, contentType, body);
    m_stop.check();
    return reply;
}

} // namespace plum
