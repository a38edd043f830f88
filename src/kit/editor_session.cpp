#include "kit/editor_session.h"

#include "kit/lsp/language_server.h"
#include "kit/lsp/message_stream.h"
#include "kit/run_options.h"

#include <QFile>

namespace plum::kit {

int serveEditor(const ScriptVocabulary &vocabulary)
{
    LanguageServer server(vocabulary);
    QFile input;
    QFile output;
    constexpr int standardInput = 0;
    constexpr int standardOutput = 1;
    // Without a buffer: a message is to be read as soon as it is there.
    if (!input.open(standardInput, QIODevice::ReadOnly | QIODevice::Unbuffered)
        || !output.open(standardOutput, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return Unusable;
    MessageStream messages(input, output);
    while (!server.hasEnded()) {
        const std::optional<QJsonObject> message = messages.read();
        if (!message)
            break;
        for (const QJsonObject &answer : server.answer(*message))
            messages.write(answer);
    }
    return server.status();
}

} // namespace plum::kit
