#include "kit/lsp/language_server.h"
#include "kit/messages/message_stream.h"
#include "support/script_bench.h"

#include <QBuffer>

// What an editor sends to the language server: bytes with their framing, or lines of JSON that are framed
// here, so that mutations reach the server. Every request has one answer with its number, and every finding
// stands in the script that is open.

using namespace plum;
using namespace Qt::StringLiterals;

namespace {

QByteArray framed(const QByteArray &lines)
{
    QByteArray stream;
    for (const QByteArray &line : lines.split('\n'))
        stream += "Content-Length: " + QByteArray::number(line.size()) + "\r\n\r\n" + line;
    return stream;
}

void expectPlaces(const QJsonObject &published)
{
    for (const QJsonValue &diagnostic : published[u"params"_s][u"diagnostics"_s].toArray()) {
        const QJsonValue range = diagnostic[u"range"_s];
        const EditorPlace from = kit::placeFrom(range[u"start"_s]);
        const EditorPlace to = kit::placeFrom(range[u"end"_s]);
        if (from.line < 0 || from.character < 0 || to.line != from.line || to.character < from.character)
            qFatal("a finding has no place in the script");
    }
}

void expectAnswers(const QJsonObject &message, const QList<QJsonObject> &answers)
{
    for (const QJsonObject &answer : answers)
        expectPlaces(answer);
    const bool isRequest = message.contains(u"id"_s) && !message[u"method"_s].toString().isEmpty();
    if (!isRequest)
        return;
    if (answers.size() != 1 || answers.first()[u"id"_s] != message[u"id"_s]
        || answers.first().contains(u"result"_s) == answers.first().contains(u"error"_s))
        qFatal("a request has not one answer");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static recording::ScriptBench bench;
    static const ScriptVocabulary vocabulary = bench.system.vocabulary();
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QByteArray stream = input.startsWith('{') ? framed(input) : input;
    QBuffer from(&stream);
    from.open(QIODevice::ReadOnly);
    QBuffer to;
    to.open(QIODevice::WriteOnly);
    kit::MessageStream messages(from, to);
    kit::LanguageServer server(vocabulary);
    while (!server.hasEnded()) {
        const kit::ReceivedMessage message = messages.read();
        if (message.kind != kit::ReceivedMessage::Kind::Message)
            break;
        const QList<QJsonObject> answers = server.answer(message.content);
        expectAnswers(message.content, answers);
        for (const QJsonObject &answer : answers)
            messages.write(answer);
    }
    return 0;
}
