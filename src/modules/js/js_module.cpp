#include "platform/linux/javascript_module.h"

#include "modules/js/qjs_javascript.h"

#include <QObject>

namespace plum {

class QjsModule final : public QObject, public JavaScriptModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.JavaScriptModule/1")
    Q_INTERFACES(plum::JavaScriptModule)

public:
    std::unique_ptr<JavaScript> createJavaScript() override { return std::make_unique<QjsJavaScript>(); }
};

} // namespace plum

#include "js_module.moc"
