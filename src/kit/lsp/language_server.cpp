#include "kit/lsp/language_server.h"

#include <QFileInfo>
#include <QUrl>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

QJsonObject errorOf(int code, const QString &reason)
{
    return {{u"code"_s, code}, {u"message"_s, reason}};
}

} // namespace

QList<QJsonObject> LanguageServer::answer(const QJsonObject &message)
{
    const QString method = message[u"method"_s].toString();
    const QJsonObject parameters = message[u"params"_s].toObject();
    if (!message.contains(u"id"_s))
        return notified(method, parameters);
    if (method.isEmpty()) // an answer; nothing was asked
        return {};
    QJsonObject reply{{u"jsonrpc"_s, u"2.0"_s}, {u"id"_s, message[u"id"_s]}};
    try {
        const QJsonValue result = requested(method, parameters);
        if (result.isUndefined())
            reply[u"error"_s] = errorOf(RequestError::unknownMethod, u"there is no method %1"_s.arg(method));
        else
            reply[u"result"_s] = result;
    } catch (const RequestError &error) {
        reply[u"error"_s] = errorOf(error.code(), error.reason());
    }
    return {reply};
}

QList<QJsonObject> LanguageServer::notified(const QString &method, const QJsonObject &parameters)
{
    const QJsonObject document = parameters[u"textDocument"_s].toObject();
    const QString address = document[u"uri"_s].toString();
    if (method == "exit"_L1) {
        m_hasEnded = true;
    } else if (method == "textDocument/didOpen"_L1) {
        open(address, document[u"text"_s].toString());
        return {findingsOf(address)};
    } else if (method == "textDocument/didChange"_L1) {
        change(address, parameters[u"contentChanges"_s].toArray());
        return {findingsOf(address)};
    } else if (method == "textDocument/didClose"_L1) {
        m_scripts.remove(address);
        return {findingsOf(address)};
    }
    return {};
}

// Undefined for a method that there is not.
QJsonValue LanguageServer::requested(const QString &method, const QJsonObject &parameters)
{
    if (method == "initialize"_L1) {
        if (const QString locale = parameters[u"locale"_s].toString(); !locale.isEmpty() && m_speak)
            m_speak(locale);
        return QJsonObject{{u"capabilities"_s, ScriptAnswers::capabilities()},
            {u"serverInfo"_s, QJsonObject{{u"name"_s, u"plumkit lsp"_s}}}};
    }
    if (method == "shutdown"_L1) {
        m_isShutDown = true;
        return QJsonValue::Null;
    }
    const OpenScript script = m_scripts.value(parameters[u"textDocument"_s][u"uri"_s].toString());
    return m_answers.answer(method, script, parameters);
}

void LanguageServer::open(const QString &address, const QString &text)
{
    const QUrl url(address);
    const QString folder = url.isLocalFile() ? QFileInfo(url.toLocalFile()).absolutePath() : QString();
    const auto script = m_scripts.insert(address, OpenScript(folder, text));
    script->examine(m_answers.check());
}

void LanguageServer::change(const QString &address, const QJsonArray &changes)
{
    const auto script = m_scripts.find(address);
    if (script == m_scripts.end())
        return;
    for (const auto &change : changes) {
        const QString text = change[u"text"_s].toString();
        const QJsonValue range = change[u"range"_s];
        if (range.isObject())
            script->replace(placeFrom(range[u"start"_s]), placeFrom(range[u"end"_s]), text);
        else
            script->replaceAll(text);
    }
    script->examine(m_answers.check());
}

QJsonObject LanguageServer::findingsOf(const QString &address) const
{
    QJsonArray diagnostics;
    if (const auto script = m_scripts.constFind(address); script != m_scripts.constEnd()) {
        for (const Finding &finding : script->findings())
            diagnostics += toJson(*script, finding);
    }
    return {{u"jsonrpc"_s, u"2.0"_s}, {u"method"_s, u"textDocument/publishDiagnostics"_s},
        {u"params"_s, QJsonObject{{u"uri"_s, address}, {u"diagnostics"_s, diagnostics}}}};
}

} // namespace plum::kit
