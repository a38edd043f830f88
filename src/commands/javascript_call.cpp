#include "commands/javascript_call.h"

#include "platform/javascript.h"

namespace plum {

using namespace Qt::StringLiterals;

JavaScript::Result callJs(
    JavaScript &javaScript, const QString &script, const QString &function, const QString &arguments)
{
    const QString forwardSlashes = QString(arguments).replace(u'\\', u'/');
    QString program = script + function + u'(' + forwardSlashes + u");"_s;
    program.remove(u"\r\n"_s);
    return javaScript.evaluate(program);
}

QString EvalJs(
    JavaScript &javaScript, const QString &script, const QString &function, const QString &arguments)
{
    const JavaScript::Result result = callJs(javaScript, script, function, arguments);
    return result.ok ? result.value : QString();
}

} // namespace plum
