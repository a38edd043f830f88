#include "platform/linux/loaded_javascript.h"

#include "platform/linux/javascript_factory.h"
#include "platform/loaded_module.h"

namespace plum {

using namespace Qt::StringLiterals;

JavaScript::Result LoadedJavaScript::evaluate(const QString &program)
{
    if (!m_javaScript) {
        LoadedModule library(u"plum-js"_s);
        auto *module = qobject_cast<JavaScriptFactory *>(library.object());
        if (module == nullptr)
            return {false, library.problem()};
        m_javaScript = module->createJavaScript();
    }
    return m_javaScript->evaluate(program);
}

} // namespace plum
