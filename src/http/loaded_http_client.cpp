#include "http/loaded_http_client.h"

#include "http/http_client_factory.h"
#include "platform/loaded_module.h"

namespace plum {

using namespace Qt::StringLiterals;

QString LoadedHttpClient::unavailable()
{
    if (m_client)
        return m_client->unavailable();
    LoadedModule library(u"plum-http"_s);
    auto *module = qobject_cast<HttpClientFactory *>(library.object());
    if (module == nullptr)
        return library.problem();
    m_client = module->createClient();
    return m_client->unavailable();
}

HttpReply LoadedHttpClient::get(const QString &url)
{
    return unavailable().isEmpty() ? m_client->get(url) : HttpReply();
}

HttpReply LoadedHttpClient::request(const HttpRequest &request)
{
    return unavailable().isEmpty() ? m_client->request(request) : HttpReply();
}

HttpReply LoadedHttpClient::post(const QString &url, const QByteArray &contentType, QIODevice &body)
{
    return unavailable().isEmpty() ? m_client->post(url, contentType, body) : HttpReply();
}

void LoadedHttpClient::giveUp()
{
    if (m_client)
        m_client->giveUp();
}

} // namespace plum
