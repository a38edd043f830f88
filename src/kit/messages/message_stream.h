#pragma once

#include <QIODevice>
#include <QJsonObject>

namespace plum::kit {

// What has come over a stream.
struct ReceivedMessage
{
    enum class Kind {
        Message,
        NoObject, // the content is no JSON object; the next message can be read
        NoMessage, // there is no length that can be used: where the next message begins is not known
        End, // of the stream, also inside a message
    };

    Kind kind = Kind::End;
    QJsonObject content = {};
};

// Messages as the language server protocol and the debug adapter protocol send them: a header with the
// length, an empty line, JSON.
class MessageStream
{
public:
    MessageStream(QIODevice &from, QIODevice &to)
        : m_from(from)
        , m_to(to)
    {
    }

    // Waits for the next message. Reading and writing may be done in two threads.
    ReceivedMessage read();

    void write(const QJsonObject &message);

private:
    QIODevice &m_from;
    QIODevice &m_to;
};

} // namespace plum::kit
