#include "kit/editor_session.h"

#include "kit/lsp/language_server.h"
#include "kit/messages/message_stream.h"
#include "kit/run_options.h"

#include <QFile>

namespace plum::kit {

int serveEditor(const ScriptVocabulary &vocabulary, const TalkFiles &files,
    const std::function<void(const QString &locale)> &speak)
{
    LanguageServer server(vocabulary, speak);
    QFile input;
    QFile output;
    // Without a buffer: a message is to be read as soon as it is there.
    if (!input.open(files.input, QIODevice::ReadOnly | QIODevice::Unbuffered)
        || !output.open(files.output, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return Unusable;
    MessageStream messages(input, output);
    while (!server.hasEnded()) {
        const ReceivedMessage message = messages.read();
        if (message.kind != ReceivedMessage::Kind::Message)
            break;
        for (const QJsonObject &answer : server.answer(message.content))
            messages.write(answer);
    }
    return server.status();
}

} // namespace plum::kit
