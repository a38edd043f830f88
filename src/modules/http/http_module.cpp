#include "http/http_client_factory.h"

#include "modules/http/qt_http_client.h"

#include <QObject>

namespace plum {

class QtHttpModule final : public QObject, public HttpClientFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.HttpClientFactory/1")
    Q_INTERFACES(plum::HttpClientFactory)

public:
    std::unique_ptr<HttpClient> createClient() override { return std::make_unique<QtHttpClient>(); }
};

} // namespace plum

#include "http_module.moc"
