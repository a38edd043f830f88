#include "kit/lsp/language_server.h"

#include "engine/editions/later_edition.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

// Numbers of the protocol.
constexpr int unknownMethod = -32601;
constexpr int wholeDocuments = 1; // each change sends all of the text

QJsonObject messageOf(const QString &method, const QJsonObject &parameters)
{
    return {{u"jsonrpc"_s, u"2.0"_s}, {u"method"_s, method}, {u"params"_s, parameters}};
}

int severityOf(Severity severity)
{
    return severity == Severity::Error ? 1 : severity == Severity::Warning ? 2 : 4;
}

int completionKindOf(ScriptWords::Kind kind)
{
    using enum ScriptWords::Kind;
    switch (kind) {
    case Namespace:
        return 9; // module
    case Command:
        return 3; // function
    case Choice:
        return 20; // member of an enumeration
    case Key:
        return 21; // constant
    case Variable:
        return 6;
    case Reference:
        return 10; // property
    }
    return 1;
}

QJsonObject placeOf(int line, qsizetype character)
{
    return {{u"line"_s, line}, {u"character"_s, static_cast<int>(character)}};
}

// From a finding's place to the next comma, or to the line's end.
QJsonObject rangeOf(const Finding &finding, const QStringList &lines)
{
    const QString line = lines.value(finding.line - 1);
    const qsizetype start = std::clamp<qsizetype>(finding.column - 1, 0, line.size());
    const qsizetype comma = line.indexOf(u',', start);
    return {{u"start"_s, placeOf(finding.line - 1, start)},
        {u"end"_s, placeOf(finding.line - 1, comma < 0 ? line.size() : comma)}};
}

QJsonObject capabilities()
{
    return {{u"capabilities"_s,
                QJsonObject{{u"textDocumentSync"_s,
                                QJsonObject{{u"openClose"_s, true}, {u"change"_s, wholeDocuments}}},
                    {u"completionProvider"_s,
                        QJsonObject{{u"triggerCharacters"_s, QJsonArray{u"."_s, u"\""_s, u","_s, u" "_s}}}},
                    {u"hoverProvider"_s, true}}},
        {u"serverInfo"_s, QJsonObject{{u"name"_s, u"plumkit lsp"_s}}}};
}

// Lines as the protocol counts them, which is not how a script of edition 1 does.
QStringList linesOf(const QString &text)
{
    static const QRegularExpression lineEnd(u"\r\n|\n|\r"_s);
    return text.split(lineEnd);
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
    if (method == "shutdown"_L1)
        m_isShutDown = true;
    const QJsonValue result = requested(method, parameters);
    if (result.isUndefined())
        reply[u"error"_s]
            = QJsonObject{{u"code"_s, unknownMethod}, {u"message"_s, u"there is no method %1"_s.arg(method)}};
    else
        reply[u"result"_s] = result;
    return {reply};
}

QList<QJsonObject> LanguageServer::notified(const QString &method, const QJsonObject &parameters)
{
    const QJsonObject document = parameters[u"textDocument"_s].toObject();
    const QString address = document[u"uri"_s].toString();
    if (method == "exit"_L1) {
        m_hasEnded = true;
    } else if (method == "textDocument/didOpen"_L1) {
        change(address, document[u"text"_s].toString());
        return {findingsOf(address)};
    } else if (method == "textDocument/didChange"_L1) {
        const QJsonArray changes = parameters[u"contentChanges"_s].toArray();
        if (!changes.isEmpty())
            change(address, changes.last()[u"text"_s].toString());
        return {findingsOf(address)};
    } else if (method == "textDocument/didClose"_L1) {
        m_documents.remove(address);
        return {findingsOf(address)};
    }
    return {};
}

// Undefined for a method that there is not.
QJsonValue LanguageServer::requested(const QString &method, const QJsonObject &parameters) const
{
    if (method == "initialize"_L1)
        return capabilities();
    if (method == "shutdown"_L1)
        return QJsonValue::Null;
    const Document document = m_documents.value(parameters[u"textDocument"_s][u"uri"_s].toString());
    const int line = parameters[u"position"_s][u"line"_s].toInt();
    const int character = parameters[u"position"_s][u"character"_s].toInt();
    if (method == "textDocument/completion"_L1)
        return completion(document, line, character);
    if (method == "textDocument/hover"_L1)
        return hover(document, line, character);
    return QJsonValue::Undefined;
}

void LanguageServer::change(const QString &address, const QString &text)
{
    const QUrl url(address);
    const int edition = askedEdition(text.toUtf8()).number;
    m_documents[address] = {url.isLocalFile() ? QFileInfo(url.toLocalFile()).absolutePath() : QString(), text,
        linesOf(text), edition == 1 ? Edition::One : Edition::Two};
}

QJsonObject LanguageServer::findingsOf(const QString &address) const
{
    QJsonArray diagnostics;
    if (const auto document = m_documents.constFind(address); document != m_documents.constEnd()) {
        for (const Finding &finding : m_check.check(document->text.toUtf8(), document->folder)) {
            diagnostics += QJsonObject{{u"range"_s, rangeOf(finding, document->lines)},
                {u"severity"_s, severityOf(finding.severity)}, {u"code"_s, finding.rule},
                {u"source"_s, u"plumkit"_s}, {u"message"_s, finding.message}};
        }
    }
    return messageOf(
        u"textDocument/publishDiagnostics"_s, {{u"uri"_s, address}, {u"diagnostics"_s, diagnostics}});
}

QJsonArray LanguageServer::completion(const Document &document, int line, int character) const
{
    QJsonArray items;
    const QString before = document.lines.value(line).left(std::max(character, 0));
    for (const ScriptWords::Suggestion &suggestion :
        m_words.suggestions(document.lines, before, document.edition)) {
        QJsonObject item{{u"label"_s, suggestion.text}, {u"kind"_s, completionKindOf(suggestion.kind)}};
        if (!suggestion.sentence.isEmpty())
            item[u"documentation"_s] = suggestion.sentence;
        items += item;
    }
    return items;
}

QJsonValue LanguageServer::hover(const Document &document, int line, int character) const
{
    const QString text = m_words.explanation(document.lines.value(line), character, document.edition);
    if (text.isEmpty())
        return QJsonValue::Null;
    return QJsonObject{{u"contents"_s, QJsonObject{{u"kind"_s, u"plaintext"_s}, {u"value"_s, text}}}};
}

} // namespace plum::kit
