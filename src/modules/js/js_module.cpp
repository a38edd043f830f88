#include "platform/linux/javascript_factory.h"

#include "modules/js/qjs_javascript.h"

#include <QObject>

namespace plum {

class QjsModule final : public QObject, public JavaScriptFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.JavaScriptFactory/1")
    Q_INTERFACES(plum::JavaScriptFactory)

public:
    std::unique_ptr<JavaScript> createJavaScript() override { return std::make_unique<QjsJavaScript>(); }
};

} // namespace plum

#include "js_module.moc"
