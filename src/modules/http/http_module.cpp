#include "http/http_module.h"

#include "modules/http/qt_http_client.h"

#include <QObject>

namespace plum {

class QtHttpModule final : public QObject, public HttpModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.HttpModule/1")
    Q_INTERFACES(plum::HttpModule)

public:
    std::unique_ptr<HttpClient> createClient() override { return std::make_unique<QtHttpClient>(); }
};

} // namespace plum

#include "http_module.moc"
